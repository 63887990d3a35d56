#pragma once

#include <QtGui/QIcon>
#include <QtGui/QPixmap>

/// The program's icon in all its sizes, 16 to 256 pixels; for windows.
QIcon programIcon();

/// The icon as one picture of 256 by 256 pixels, for printed pages; what shows it scales it down.
QPixmap programPicture();
