#pragma once

/// Positions and widths are told in twips where they are told: 1/1440 inch, 15 to a pixel at 96 dpi. Screens
/// are laid out at that resolution.
inline constexpr int twipsPerPixel = 15;

constexpr int pixelsFromTwips(int twips)
{
    return (twips + (twips < 0 ? -7 : 7)) / twipsPerPixel; // the nearest pixel
}
constexpr int twipsFromPixels(int pixels)
{
    return pixels * twipsPerPixel;
}
