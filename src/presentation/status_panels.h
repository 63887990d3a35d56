#pragma once

class QLabel;
class QStatusBar;
class QString;

/// Adds a panel behind those that a screen's status bar has, all of one width: text in the screen's font, as
/// it stands, on the left in English and in the middle in Arabic. The bar owns it.
QLabel *addStatusPanel(QStatusBar *bar, const QString &text);
