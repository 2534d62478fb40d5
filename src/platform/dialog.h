#pragma once

#include <vector>

#include "platform/window.h"

// A dialog that the application has laid out in a template of that number.
class CDialog : public CDynamic<CDialog, CWnd>
{
public:
    explicit CDialog(int templateNumber) : templateNumber(templateNumber) {}

    int getTemplateNumber() const { return templateNumber; }
    // Shows it and waits until it is closed; the answer is one of `orvane::answer`.
    virtual int DoModal() = 0;

private:
    int templateNumber;
};

// A dialog that stays open beside the others and shows the model. It is known from its construction to
// its destruction, and is asked to read the model again after every action. One thread.
class CModelessDialog
{
public:
    CModelessDialog();
    virtual ~CModelessDialog();
    CModelessDialog(CModelessDialog const &) = delete;
    CModelessDialog & operator=(CModelessDialog const &) = delete;

    // Asks all dialogs that are open at this moment, in the order in which they were opened, and then the
    // host. A dialog may open and destroy dialogs meanwhile, itself included.
    static void updateAllDialogs(bool everything);

protected:
    // Reads the model again: all of it when `everything`, otherwise what its changed flags show.
    virtual void updateFromModel(bool everything) = 0;

private:
    static std::vector<CModelessDialog *> & open();
    static void forgetClosed();
};
