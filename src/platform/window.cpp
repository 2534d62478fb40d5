#include "platform/window.h"

#include "platform/host.h"

void CWnd::setProperty(int number, orvane::ControlValue const & value, int index)
{
    orvane::host().writeControl(*this, number, index, value);
}

orvane::ControlValue CWnd::readProperty(int number, int index) const
{
    return orvane::host().readControl(*this, number, index);
}

orvane::Rectangle CWnd::getRectangle() const
{
    return orvane::host().windowRectangle(*this);
}
