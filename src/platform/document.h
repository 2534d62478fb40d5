#pragma once

#include "platform/object.h"

// What the library asks of an application's document: to remember that the model in it was changed.
class CDocument : public CDynamic<CDocument>
{
public:
    CDocument() = default;
    CDocument(CDocument const &) = delete;
    CDocument & operator=(CDocument const &) = delete;

    virtual void SetModifiedFlag(bool modified = true) { this->modified = modified; }
    virtual bool IsModified() const { return modified; }

private:
    bool modified = false;
};
