#pragma once

#include "platform/ui/screen.h"

#include <QtGui/QGuiApplication>

/// The hourglass as long as it stands; one inside of another leaves it to that one.
class Hourglass
{
public:
    Hourglass() { Screen::setHourglass(true); }
    ~Hourglass() { Screen::setHourglass(m_before); }
    Hourglass(const Hourglass &) = delete;
    Hourglass &operator=(const Hourglass &) = delete;

private:
    const bool m_before = QGuiApplication::overrideCursor() != nullptr;
};
