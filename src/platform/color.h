#pragma once

class CArchive;

// A colour as the scene knows it: three components from 0 to 1, white at first.
class CColor
{
public:
    CColor() = default;
    CColor(float red, float green, float blue) : components{red, green, blue} {}

    float red() const { return components[0]; }
    float green() const { return components[1]; }
    float blue() const { return components[2]; }

    // The three components, 4 bytes each. What is no number from 0 to 1 becomes one when loaded.
    void Serialize(CArchive & archive);

    friend bool operator==(CColor const &, CColor const &) = default;

private:
    float components[3] = {1.0F, 1.0F, 1.0F};
};
