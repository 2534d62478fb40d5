#include "app/failure.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <memory>

#include <fmt/format.h>
#include <sys/stat.h>

#include "app/command.h"
#include "persistence/replaced_file.h"
#include "platform/archive.h"
#include "platform/file.h"
#include "platform/io_error.h"

namespace orvane::app
{

std::string describe(CFileException const & failure)
{
    CString const sentence = getErrorDescription(failure);
    return fmt::format("{}: {}", failure.m_strFileName.view(), sentence.IsEmpty() ? "cannot be used" : sentence.view());
}

std::string describe(CArchiveException const & failure, std::string const & path)
{
    bool const ends = failure.m_cause == CArchiveException::endOfFile;
    return fmt::format("{}: {}", path.empty() ? "the project file" : path,
                       ends ? "the file ends too early" : "the file is damaged, or no project file");
}

std::string readText(std::string const & path)
{
    constexpr std::size_t most = std::size_t{1} << 30;
    auto const refuse = [&](char const * why) { throw Refusal(fmt::format("{}: {}", path, why)); };
    struct Close
    {
        void operator()(std::FILE * file) const { std::fclose(file); }
    };
    std::string text;
    std::unique_ptr<std::FILE, Close> opened;
    std::FILE * file = stdin;
    if (path != "-")
    {
        struct stat status = {};
        if (stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode)) refuse("is a directory");
        opened.reset(std::fopen(path.c_str(), "rbe"));
        if (!opened) refuse(std::strerror(errno));
        file = opened.get();
        if (S_ISREG(status.st_mode)) text.reserve(std::min(static_cast<std::size_t>(status.st_size), most));
    }
    char block[65536];
    while (std::size_t const count = std::fread(block, 1, sizeof block, file))
    {
        if (text.size() + count > most) refuse("is larger than 1 GiB");
        text.append(block, count);
    }
    if (std::ferror(file)) refuse(std::strerror(errno));
    return text;
}

void writeText(std::string const & path, std::string const & text)
{
    if (path == "-")
    {
        std::cout << text;
        return;
    }
    CReplacedFile target(path.c_str(), CReplacedFile::NewFile::byUmask);
    CFile file;
    CFileException failure;
    if (!target.open(file, &failure)) throw failure;
    // In pieces that a file takes.
    constexpr std::size_t piece = std::size_t{1} << 24;
    for (std::size_t at = 0; at < text.size(); at += piece)
        file.Write(text.data() + at, static_cast<unsigned int>(std::min(piece, text.size() - at)));
    file.Close();
    target.commit();
}

}  // namespace orvane::app
