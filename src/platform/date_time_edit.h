#pragma once

#include <cstdint>

#include "platform/guid.h"
#include "platform/window.h"

// A field in which the user edits a date and time: a control of its own class that the application hosts.
// Everything is kept by the control; without one it reads as 0.
class CDateTimeEdit : public CDynamic<CDateTimeEdit, CWnd>
{
public:
    static _GUID const & GetClsid();
    // Makes the control in its parent, which may be null; false when the host cannot.
    virtual bool Create(orvane::Rectangle const & box, CWnd * parent, int id);

    // Days since 30 December 1899 00:00, the time of day as their fraction.
    double GetDateTime() const { return getProperty<double>(dateTime); }
    void SetDateTime(double days) { setProperty(dateTime, days); }

    std::int32_t GetControlWidth() const { return getProperty<std::int32_t>(controlWidth); }
    void SetControlWidth(std::int32_t width) { setProperty(controlWidth, width); }
    std::int32_t GetControlHeight() const { return getProperty<std::int32_t>(controlHeight); }
    void SetControlHeight(std::int32_t height) { setProperty(controlHeight, height); }

    bool GetClear() const { return isSet(clear); }
    void SetClear(bool value) { set(clear, value); }
    bool GetEnable() const { return isSet(enable); }
    void SetEnable(bool value) { set(enable, value); }
    bool GetStyleVerbose() const { return isSet(styleVerbose); }
    void SetStyleVerbose(bool value) { set(styleVerbose, value); }
    bool GetStyleDateOnly() const { return isSet(styleDateOnly); }
    void SetStyleDateOnly(bool value) { set(styleDateOnly, value); }

    void Reset();

    bool GetYearFull(int index) const { return isSet(yearFull, index); }
    void SetYearFull(int index, int value) { set(yearFull, value != 0, index); }
    bool GetYearShort(int index) const { return isSet(yearShort, index); }
    void SetYearShort(int index, int value) { set(yearShort, value != 0, index); }

    // The window of the control, beside what its own property says.
    virtual void disableWindow() { set(orvane::property::enabled, false); }
    virtual void enableWindow() { set(orvane::property::enabled, true); }

private:
    // The numbers by which the control knows them.
    enum Member
    {
        dateTime = 19,
        controlWidth = 20,
        controlHeight = 21,
        clear = 22,
        enable = 23,
        styleVerbose = 24,
        styleDateOnly = 25,
        reset = 28,
        yearFull = 29,
        yearShort = 30,
    };

    bool isSet(int number, int index = 0) const { return getProperty<std::int32_t>(number, index) != 0; }
    void set(int number, bool value, int index = 0) { setProperty(number, std::int32_t{value}, index); }
};
