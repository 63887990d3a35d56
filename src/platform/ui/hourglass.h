#pragma once

#include "platform/ui/screen.h"

/// The hourglass as long as it stands.
class Hourglass
{
public:
    Hourglass() { Screen::setHourglass(true); }
    ~Hourglass() { Screen::setHourglass(false); }
    Hourglass(const Hourglass &) = delete;
    Hourglass &operator=(const Hourglass &) = delete;
};
