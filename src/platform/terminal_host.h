#pragma once

#include <cstdio>

#include "platform/host.h"

namespace orvane
{

// The desktop of a program that has none. Boxes go to the error output. A question is asked only when
// input and output are a terminal; otherwise nobody is there to agree, and the answer is No.
class CTerminalHost : public IHost
{
public:
    explicit CTerminalHost(std::FILE * input = stdin, std::FILE * output = stderr) : input(input), output(output) {}

    int messageBox(CString const & text, CString const & caption, unsigned flags) override;
    // A line that stays; nobody has to wait for it.
    void showNotice(CDialog & dialog, Notice const & notice) override;
    // Nothing unless the output is a terminal.
    void beep(int sound) override;

private:
    int ask();
    // The next line without its end. False when the input has ended.
    bool readLine(CString & line);

    std::FILE * input;
    std::FILE * output;
};

}  // namespace orvane
