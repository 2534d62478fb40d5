#pragma once

#include <vector>

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
