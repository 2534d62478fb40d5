#include "app/commands/commands.h"

#include <iostream>

#include <CLI/CLI.hpp>

#include "app/command.h"
#include "app/dump/dump_writer.h"
#include "app/dump/figures.h"
#include "app/session.h"
#include "persistence/replaced_file.h"
#include "platform/file.h"

namespace orvane::app
{
namespace
{

struct DumpOptions
{
    std::string path;
    std::string output = "-";
    Login login;
};

// Hands what a stream writes to a file, block by block. A stream would swallow what the file throws: it is kept.
class FileBuffer : public std::streambuf
{
public:
    explicit FileBuffer(CFile & file) : file(file) { setp(block, block + sizeof block); }

    // Throws what went wrong since the beginning.
    void finish()
    {
        deliver();
        if (failure) std::rethrow_exception(failure);
    }

private:
    int_type overflow(int_type next) override
    {
        deliver();
        if (failure) return traits_type::eof();
        if (!traits_type::eq_int_type(next, traits_type::eof())) sputc(traits_type::to_char_type(next));
        return traits_type::not_eof(next);
    }
    void deliver()
    {
        auto const size = static_cast<unsigned int>(pptr() - pbase());
        setp(block, block + sizeof block);
        if (failure || size == 0) return;
        try
        {
            file.Write(block, size);
        }
        catch (...)
        {
            failure = std::current_exception();
        }
    }

    CFile & file;
    std::exception_ptr failure;
    char block[65536];
};

// The file is whole, or as it was.
void dumpToFile(CProject const & project, std::string const & path)
{
    CReplacedFile target(path.c_str(), CReplacedFile::NewFile::byUmask);
    CFile file;
    CFileException failure;
    if (!target.open(file, &failure)) throw failure;
    FileBuffer buffer(file);
    std::ostream out(&buffer);
    writeDump(out, project);
    buffer.finish();
    file.Close();
    target.commit();
}

int dump(DumpOptions const & options)
{
    CriticalPathAsked const asked;
    Session const session(options.path, Session::Purpose::reading, options.login);
    if (options.output == "-") writeDump(std::cout, session.project());
    else dumpToFile(session.project(), options.output);
    return ending::done;
}

}  // namespace

void addDump(CLI::App & program)
{
    auto const options = std::make_shared<DumpOptions>();
    CLI::App & command =
        addCommand(program, "dump", "writes the whole project as JSON, with all that is computed",
                   "  orvane dump bridge.prj | jq '.tasks[].name'\n  orvane dump bridge.prj -o bridge.json");
    addProject(command, options->path);
    command.add_option("-o,--output", options->output, "the file to write; - is the standard output")
        ->type_name("FILE")
        ->capture_default_str();
    addLoginOption(command, options->login);
    onRun(command, [options] { return dump(*options); });
}

}  // namespace orvane::app
