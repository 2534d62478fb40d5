#include "persistence/read_ahead.h"

#include <algorithm>
#include <cstring>
#include <system_error>

namespace orvane
{

CReadAhead::CReadAhead(CFile & source) : source(source)
{
    SetFilePath(source.GetFilePath());
    try
    {
        thread = std::thread(&CReadAhead::readBlocks, this);
    }
    catch (std::system_error const &)
    {
        // Without a thread it reads when asked.
    }
}

CReadAhead::~CReadAhead()
{
    {
        std::lock_guard const lock(mutex);
        stopped = true;
    }
    moved.notify_all();
    if (thread.joinable()) thread.join();
}

// ---- the thread -----------------------------------------------------------------------------------

bool CReadAhead::readBlock(std::vector<unsigned char> & block)
{
    block.resize(blockSize);
    block.resize(source.Read(block.data(), static_cast<unsigned int>(block.size())));
    return !block.empty();
}

void CReadAhead::readBlocks()
{
    std::unique_lock lock(mutex);
    while (!stopped && !ended)
    {
        std::vector<unsigned char> & block = blocks[filled % blocks.size()];
        lock.unlock();
        bool more = false;
        std::exception_ptr thrown;
        try
        {
            more = readBlock(block);
        }
        catch (...)
        {
            thrown = std::current_exception();
        }
        lock.lock();
        filled += more;
        ended = !more;
        failure = thrown;
        moved.notify_all();
        moved.wait(lock, [this] { return stopped || ended || filled - taken < blocks.size(); });
    }
}

// ---- whoever takes --------------------------------------------------------------------------------

bool CReadAhead::takeNextBlock()
{
    std::unique_lock lock(mutex);
    if (started && taken < filled) ++taken;
    started = true;
    position = 0;
    moved.notify_all();
    moved.wait(lock, [this] { return taken < filled || ended; });
    if (taken < filled) return true;
    started = false;
    if (failure) std::rethrow_exception(failure);
    return false;
}

unsigned int CReadAhead::Read(void * buffer, unsigned int count)
{
    if (!thread.joinable()) return source.Read(buffer, count);
    auto * const to = static_cast<unsigned char *>(buffer);
    unsigned int got = 0;
    while (got < count)
    {
        std::vector<unsigned char> const & block = blocks[taken % blocks.size()];
        if (!started || position == block.size())
        {
            if (!takeNextBlock()) break;
            continue;
        }
        std::size_t const piece = std::min<std::size_t>(count - got, block.size() - position);
        std::memcpy(to + got, block.data() + position, piece);
        position += piece;
        got += static_cast<unsigned int>(piece);
    }
    return got;
}

}  // namespace orvane
