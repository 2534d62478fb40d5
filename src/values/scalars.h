#pragma once

#include "platform/color.h"
#include "platform/saturate.h"
#include "platform/string.h"
#include "values/value.h"

#include <concepts>
#include <cstdint>

// Single numbers, texts and colours as fields of the model. A default-constructed one is not valid; one
// made from a value is valid and unchanged. Comparisons look at the value alone.

class CProjectBool : public orvane::CFlagged<CProjectBool>
{
public:
    CProjectBool() = default;
    // Anything but zero is true. A pointer is no number, and refused.
    template <std::integral T>
    CProjectBool(T number) : CFlagged(true), value(number != T{})
    {
    }

    void Serialize(CProjectArchive & archive) { exchangeLeaf(archive, value); }
    void xmlSerialize(CProjectXMLArchive & archive, CString const & name);

    bool getValue() const { return value; }
    operator int() const { return value; }

    friend bool operator==(CProjectBool const & a, CProjectBool const & b) { return a.value == b.value; }
    friend bool operator>(CProjectBool const & a, CProjectBool const & b) { return a.value > b.value; }
    // Against plain numbers, where the conversions of either side would serve equally well.
    template <std::integral T>
    friend bool operator==(CProjectBool const & a, T b)
    {
        return a == CProjectBool(b);
    }
    template <std::integral T>
    friend bool operator>(CProjectBool const & a, T b)
    {
        return a > CProjectBool(b);
    }

private:
    bool value = false;
};

// 32 bits; what lies beyond stops at the ends. A number that was never set reads -1, visibly out of range.
class CProjectInt : public orvane::CFlagged<CProjectInt>
{
public:
    CProjectInt() = default;
    CProjectInt(int value) : CFlagged(true), value(value) {}
    void Serialize(CProjectArchive & archive) { exchangeLeaf(archive, value); }
    void xmlSerialize(CProjectXMLArchive & archive, CString const & name);

    int getValue() const { return value; }

    CProjectInt & operator+=(int other) { return become(std::int64_t{value} + other); }
    CProjectInt & operator-=(int other) { return become(std::int64_t{value} - other); }
    CProjectInt & operator*=(int other) { return become(std::int64_t{value} * other); }
    // The divisor must not be zero.
    CProjectInt & operator/=(int other) { return become(std::int64_t{value} / other); }
    CProjectInt operator-() const { return bounded(-std::int64_t{value}); }

    friend CProjectInt operator+(CProjectInt const & a, CProjectInt const & b)
    {
        return bounded(std::int64_t{a.value} + b.value);
    }
    friend CProjectInt operator-(CProjectInt const & a, CProjectInt const & b)
    {
        return bounded(std::int64_t{a.value} - b.value);
    }
    friend bool operator==(CProjectInt const & a, CProjectInt const & b) { return a.value == b.value; }
    friend bool operator>(CProjectInt const & a, CProjectInt const & b) { return a.value > b.value; }

private:
    static CProjectInt bounded(std::int64_t number) { return CProjectInt(orvane::saturate<std::int32_t>(number)); }
    CProjectInt & become(std::int64_t number)
    {
        value = orvane::saturate<std::int32_t>(number);
        changed = true;
        return *this;
    }

    std::int32_t value = -1;
};

// 64-bit floating point. A number that was never set reads -1.
class CProjectDouble : public orvane::CFlagged<CProjectDouble>
{
public:
    CProjectDouble() = default;
    CProjectDouble(double value) : CFlagged(true), value(value) {}
    void Serialize(CProjectArchive & archive) { exchangeLeaf(archive, value); }
    void xmlSerialize(CProjectXMLArchive & archive, CString const & name);

    double getValue() const { return value; }

    CProjectDouble & operator+=(double other) { return become(value + other); }
    CProjectDouble & operator-=(double other) { return become(value - other); }
    CProjectDouble & operator*=(double other) { return become(value * other); }
    CProjectDouble & operator/=(double other) { return become(value / other); }
    CProjectDouble operator-() const { return CProjectDouble(-value); }

    friend CProjectDouble operator+(CProjectDouble const & a, CProjectDouble const & b) { return a.value + b.value; }
    friend CProjectDouble operator-(CProjectDouble const & a, CProjectDouble const & b) { return a.value - b.value; }
    friend bool operator==(CProjectDouble const & a, CProjectDouble const & b) { return a.value == b.value; }
    friend bool operator>(CProjectDouble const & a, CProjectDouble const & b) { return a.value > b.value; }

private:
    CProjectDouble & become(double number)
    {
        value = number;
        changed = true;
        return *this;
    }

    double value = -1.0;
};

// A text of the model: a CString with the flags of a value. Construction from a text gives a valid one.
// Assigning, appending and SetAt set both flags; what else changes a CString leaves the flags alone.
class CProjectString : public CString, public orvane::CFlagged<CProjectString>
{
public:
    CProjectString() = default;
    CProjectString(CString const & text) : CString(text), CFlagged(true) {}
    CProjectString(char const * text) : CString(text), CFlagged(true) {}
    CProjectString(unsigned char const * text) : CString(text), CFlagged(true) {}
    CProjectString(wchar_t const * text) : CString(text), CFlagged(true) {}
    CProjectString(char const * text, int length) : CString(text, length), CFlagged(true) {}
    template <orvane::Character T>
    CProjectString(T character, int repeat = 1) : CString(character, repeat), CFlagged(true)
    {
    }
    CProjectString(CProjectString const &) = default;
    void Serialize(CProjectArchive & archive);
    // Written when it is not empty. Line feeds are dropped, and a carriage return becomes a mark that is read as both.
    virtual void xmlSerialize(CProjectXMLArchive & archive, CString const & name);
    CProjectString & operator=(CProjectString const &) = default;

    CProjectString & operator=(CString const & text) { return given(CString::operator=(text)); }
    CProjectString & operator=(char const * text) { return given(CString::operator=(text)); }
    CProjectString & operator=(wchar_t const * text) { return given(CString::operator=(CString(text))); }
    template <orvane::Character T>
    CProjectString & operator=(T character)
    {
        return given(CString::operator=(character));
    }
    CProjectString & operator+=(CString const & text) { return given(CString::operator+=(text)); }
    CProjectString & operator+=(char const * text) { return given(CString::operator+=(text)); }
    template <orvane::Character T>
    CProjectString & operator+=(T character)
    {
        return given(CString::operator+=(character));
    }
    // Outside the text only the flags are set.
    void SetAt(int index, char character)
    {
        CString::SetAt(index, character);
        given(*this);
    }

private:
    CProjectString & given(CString const &)
    {
        valid = changed = true;
        return *this;
    }
};

// A colour of the model. Numbers have red in the low byte, green next, blue above. A number comes back from
// its colour unchanged; a colour between two numbers does not, since its fractions are cut off.
class CProjectColor : public CColor, public orvane::CFlagged<CProjectColor>
{
public:
    CProjectColor() = default;
    CProjectColor(CColor const & color) : CColor(color), CFlagged(true) {}
    // Components from 0 to 255.
    CProjectColor(int red, int green, int blue) : CColor(part(red), part(green), part(blue)), CFlagged(true) {}
    // Components from 0 to 1.
    CProjectColor(float red, float green, float blue) : CColor(red, green, blue), CFlagged(true) {}
    CProjectColor(unsigned long const & number) : CProjectColor(byte(number, 0), byte(number, 8), byte(number, 16)) {}
    CProjectColor(CProjectColor const &) = default;
    // Sets both flags, whatever the source.
    CProjectColor & operator=(CProjectColor const & other)
    {
        CColor::operator=(other);
        touch();
        return *this;
    }
    void touch() { valid = changed = true; }
    // The components alone: a colour that was loaded is valid.
    void Serialize(CProjectArchive & archive);
    void xmlSerialize(CProjectXMLArchive & archive, CString const & name);

    operator unsigned long() const;

private:
    static float part(int component) { return static_cast<float>(component * 0.00392156862745098); }
    static int byte(unsigned long number, int shift) { return static_cast<int>(number >> shift & 0xFF); }
};

// The number of an undo state. In place of a change flag it says whether the state was acknowledged.
class CProjectStateIndex : public CDynamic<CProjectStateIndex>
{
public:
    CProjectStateIndex() = default;
    CProjectStateIndex(int index) : index(index), valid(true) {}
    void Serialize(CProjectArchive & archive) { archive.exchange(index, valid, acknowledged); }
    // An element that is written only when the index is valid; read, it is.
    void xmlSerialize(CProjectXMLArchive & archive);

    int getValue() const { return index; }
    bool getAcknowledged() const { return acknowledged; }
    void setAcknowledged(bool flag) { acknowledged = flag; }
    bool isValid() const { return valid; }
    void setValid(bool flag) { valid = flag; }
    void clear() { *this = CProjectStateIndex(); }

    // By the number; whether it is acknowledged plays no part.
    friend bool operator==(CProjectStateIndex const & a, CProjectStateIndex const & b) { return a.index == b.index; }

private:
    std::int32_t index = 0;
    bool acknowledged = false;
    bool valid = false;
};
