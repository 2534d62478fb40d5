#include "platform/dialog.h"

#include <algorithm>
#include <cstddef>

#include "platform/host.h"

namespace
{

// While an update runs, places in the list stay: a dialog that closes leaves a null pointer.
int updating = 0;

struct Updating
{
    Updating() { ++updating; }
    ~Updating() { --updating; }
};

}  // namespace

std::vector<CModelessDialog *> & CModelessDialog::open()
{
    // Never destroyed, since dialogs may be static objects.
    static auto & dialogs = *new std::vector<CModelessDialog *>;
    return dialogs;
}

void CModelessDialog::forgetClosed()
{
    if (updating == 0) std::erase(open(), nullptr);
}

CModelessDialog::CModelessDialog()
{
    forgetClosed();
    open().push_back(this);
}

CModelessDialog::~CModelessDialog()
{
    std::replace(open().begin(), open().end(), this, static_cast<CModelessDialog *>(nullptr));
    forgetClosed();
}

void CModelessDialog::updateAllDialogs(bool everything)
{
    forgetClosed();
    {
        Updating const guard;
        std::size_t const count = open().size();
        for (std::size_t i = 0; i < count; ++i)
            if (CModelessDialog * const dialog = open()[i]) dialog->updateFromModel(everything);
    }
    orvane::host().updateAllDialogs(everything);
}
