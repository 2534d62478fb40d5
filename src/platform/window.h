#pragma once

#include <cstdint>
#include <variant>

#include "platform/object.h"
#include "platform/string.h"

namespace orvane
{

// An area of the screen in pixels; its right and bottom edges lie just outside.
struct Rectangle
{
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    friend bool operator==(Rectangle const &, Rectangle const &) = default;
};

// What a property of a control holds. A flag is the number 0 or 1.
using ControlValue = std::variant<std::int32_t, double, CString>;

// The properties that windows and common controls have, by number. Other controls number theirs from 0.
namespace property
{
constexpr int text = -1, enabled = -2, selection = -3, check = -4;
}

}  // namespace orvane

// A window of the application, known to the host by its address. It holds nothing itself: what it shows is
// asked of the host and told to it.
class CWnd : public CDynamic<CWnd>
{
public:
    CWnd() = default;
    CWnd(CWnd const &) = delete;
    CWnd & operator=(CWnd const &) = delete;

    // A property as the host has it, one of several when it has an index; T() when it holds no T.
    template <class T>
    T getProperty(int number, int index = 0) const
    {
        orvane::ControlValue const value = readProperty(number, index);
        auto const * const held = std::get_if<T>(&value);
        return held ? *held : T();
    }
    void setProperty(int number, orvane::ControlValue const & value, int index = 0);

    orvane::Rectangle getRectangle() const;

private:
    orvane::ControlValue readProperty(int number, int index) const;
};
