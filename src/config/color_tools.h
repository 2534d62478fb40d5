#pragma once

// Colours as numbers with red in the low byte: 0x00BBGGRR. What stands above these three bytes is not looked at.

// Hue, luminance and saturation are on a scale of 0 to 255; red is 0, green 85 and blue 170 on the circle of hues,
// which begins anew at 255. A grey has hue and saturation 0.
void RGBtoHLS(unsigned long color, double & hue, double & luminance, double & saturation);

// The nearest colour. Hues go round the circle, the others stop at the ends of the scale; what is no finite hue
// or no number counts as 0.
unsigned long HLStoRGB(double hue, double luminance, double saturation);

// Each component on the way from a (t = 0) to b (t = 1), cut to whole numbers. Any other t gives a, on both sides.
unsigned long interpolateColors(unsigned long a, unsigned long b, double t);
