#pragma once

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "platform/file.h"

namespace orvane
{

// A folder of the test's own, gone with it.
class CScratchFolder
{
public:
    CScratchFolder() { EXPECT_TRUE(mkdtemp(folder.data())); }
    CScratchFolder(CScratchFolder const &) = delete;
    CScratchFolder & operator=(CScratchFolder const &) = delete;
    ~CScratchFolder() { std::filesystem::remove_all(folder); }

    CString path(std::string const & name) const { return CString(folder + '/' + name); }
    CString write(std::string const & name, std::string const & bytes) const
    {
        // Some file systems take milliseconds to empty a file.
        std::filesystem::remove(path(name).view());
        std::ofstream(path(name), std::ios::binary) << bytes;
        return path(name);
    }
    std::string read(std::string const & name) const
    {
        std::ifstream file(path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    auto entryCount() const { return std::distance(std::filesystem::directory_iterator(folder), {}); }

private:
    std::string folder = ::testing::TempDir() + "orvane-XXXXXX";
};

// A disk that is full once a file has so many bytes.
class CFullDisk
{
public:
    explicit CFullDisk(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &before);
        rlimit const limit{bytes, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    CFullDisk(CFullDisk const &) = delete;
    CFullDisk & operator=(CFullDisk const &) = delete;
    ~CFullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
    }

private:
    rlimit before{};
    void (*handler)(int) = std::signal(SIGXFSZ, SIG_IGN);
};

// The cause that a call throws; 0 when it does not.
template <class Call>
int causeOf(Call && call)
{
    try
    {
        call();
        return CFileException::none;
    }
    catch (CFileException const & exception)
    {
        return exception.m_cause;
    }
}

}  // namespace orvane
