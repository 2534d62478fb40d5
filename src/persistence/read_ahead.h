#pragma once

#include <array>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/file.h"

namespace orvane
{

// Reads another file by a thread of its own, a little ahead of whoever takes the bytes here: inflating a file and
// building what it holds then go on side by side.
class CReadAhead : public CFile
{
public:
    // From where the source stands. It must be open, is the reader's alone from here on, and outlives it.
    explicit CReadAhead(CFile & source);
    // Stops reading and waits for the thread.
    ~CReadAhead() override;

    // What the source throws, it throws here, once the bytes before are taken.
    unsigned int Read(void * buffer, unsigned int count) override;

private:
    static constexpr std::size_t blockSize = 1 << 16;

    void readBlocks();
    // False at the end of the source.
    bool readBlock(std::vector<unsigned char> & block);
    bool takeNextBlock();

    CFile & source;
    std::mutex mutex;
    std::condition_variable moved;
    // Blocks in turn: those from `taken` up to `filled` hold bytes; the first of them is being taken.
    std::array<std::vector<unsigned char>, 8> blocks;
    std::size_t filled = 0;
    std::size_t taken = 0;
    std::size_t position = 0;
    bool started = false;
    bool ended = false;
    bool stopped = false;
    std::exception_ptr failure;
    std::thread thread;
};

}  // namespace orvane
