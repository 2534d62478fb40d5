#pragma once

// A colour as the scene knows it: three components from 0 to 1.
class CColor
{
public:
    CColor() = default;
    CColor(float red, float green, float blue) : m_red(red), m_green(green), m_blue(blue) {}

    float red() const { return m_red; }
    float green() const { return m_green; }
    float blue() const { return m_blue; }

    friend bool operator==(CColor const &, CColor const &) = default;

private:
    float m_red = 1.0F;
    float m_green = 1.0F;
    float m_blue = 1.0F;
};
