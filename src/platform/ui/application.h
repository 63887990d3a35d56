#pragma once

#include <QtWidgets/QApplication>

/// The application, with the look of all its windows. Its event dispatch ends what an event routine outside
/// of runEventRoutine() throws, by the same rules; keys go to the screen first.
class Application : public QApplication
{
    Q_OBJECT

public:
    Application(int &argc, char **argv);
    ~Application() override;
    bool notify(QObject *receiver, QEvent *event) override;
};

/// The toolkit's own words (OK, Cancel, the calendar, menus of text boxes) in Arabic or English, and the
/// direction of boxes that no screen owns. Screens have a direction of their own.
void loadToolkitWords(bool arabic);
