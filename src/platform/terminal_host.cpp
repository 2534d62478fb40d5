#include "platform/terminal_host.h"

#include <unistd.h>

namespace
{

bool isControl(unsigned char c)
{
    return (c < ' ' && c != '\n' && c != '\t') || c == 0x7F;
}

// Names in a project come from anyone, and a terminal obeys control characters: these are shown as "?",
// among them the two-byte ones from U+0080 to U+009F.
CString withoutControls(CString text)
{
    for (int i = 0; i < text.GetLength(); ++i)
    {
        auto const next = static_cast<unsigned char>(text[i + 1]);
        bool const isWideControl = text[i] == '\xC2' && next >= 0x80 && next <= 0x9F;
        if (isWideControl) text.SetAt(i + 1, '?');
        if (isWideControl || isControl(static_cast<unsigned char>(text[i]))) text.SetAt(i, '?');
    }
    return text;
}

}  // namespace

namespace orvane
{

int CTerminalHost::messageBox(CString const & text, CString const & caption, unsigned flags)
{
    CString const shown = withoutControls(caption + ": " + text);
    std::fwrite(shown, 1, shown.view().size(), output);
    int const reply = box::asks(flags) ? ask() : answer::ok;
    if (!box::asks(flags)) std::fputs("\n", output);
    std::fflush(output);
    return reply;
}

void CTerminalHost::showNotice(CDialog &, Notice const & notice)
{
    CString const line = withoutControls(notice.text) + '\n';
    std::fwrite(line, 1, line.view().size(), output);
    std::fflush(output);
}

void CTerminalHost::beep(int)
{
    if (!isatty(fileno(output))) return;
    std::fputc('\a', output);
    std::fflush(output);
}

int CTerminalHost::ask()
{
    if (!isatty(fileno(input)) || !isatty(fileno(output)))
    {
        std::fputs(" No (there is no terminal to ask at)\n", output);
        return answer::no;
    }
    for (CString line;;)
    {
        std::fputs(" [yes/no] ", output);
        std::fflush(output);
        if (!readLine(line)) return answer::no;
        if (line.CompareNoCase("y") == 0 || line.CompareNoCase("yes") == 0) return answer::yes;
        if (line.CompareNoCase("n") == 0 || line.CompareNoCase("no") == 0) return answer::no;
    }
}

bool CTerminalHost::readLine(CString & line)
{
    // A line longer than any answer is read to its end, but not kept.
    constexpr int longEnough = 256;
    line.Empty();
    int c = std::getc(input);
    if (c == EOF) return false;
    for (; c != EOF && c != '\n'; c = std::getc(input))
        if (line.GetLength() < longEnough) line += static_cast<char>(c);
    line.TrimLeft();
    line.TrimRight();
    return true;
}

}  // namespace orvane
