#pragma once

/// The widths of columns, and what is measured with them, are counted in twips: 1/1440 inch, 15 to a pixel at
/// 96 dpi, the resolution at which screens are laid out.
inline constexpr int twipsPerPixel = 15;

constexpr int pixelsFromTwips(int twips)
{
    return (twips + (twips < 0 ? -7 : 7)) / twipsPerPixel; // the nearest pixel
}
constexpr int twipsFromPixels(int pixels)
{
    return pixels * twipsPerPixel;
}
