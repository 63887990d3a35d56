#pragma once

#include "platform/ui/date_picker.h"
#include "platform/ui/flex_grid.h"
#include "platform/ui/screen.h"
#include "presentation/prepare_screen.h"

#include <QtCore/QString>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFrame>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>
#include <QtWidgets/QStatusBar>

/// A screen with a control of each kind, on a surface of 400 x 405 pixels.
class DemoScreen : public Screen
{
public:
    explicit DemoScreen(const QString &name = QStringLiteral("frmDemo"), bool allFour = true) : Screen(name)
    {
        setCentralWidget(new QWidget);
        surface()->setFixedSize(400, 405);
        setCaption(QStringLiteral("Family Members"));
        put(new QLabel(QStringLiteral("&Amount:")), "Label1", {10, 40, 70, 26})
            ->setAlignment(Qt::AlignHCenter | Qt::AlignVCenter);
        put(new QLineEdit(QStringLiteral("1000")), "txtAmount", {90, 40, 120, 24});
        put(new QPlainTextEdit(QStringLiteral("note")), "txtNote", {220, 40, 170, 60});
        put(new QCheckBox(QStringLiteral("Valid")), "Check1_0", {10, 75, 90, 24});
        auto *frame = put(new QGroupBox(QStringLiteral("Payment Method")), "Frame1", {10, 110, 160, 70});
        put(new QPushButton(QStringLiteral("Users")), "Command5", {10, 30, 60, 26}, frame);
        put(new QRadioButton(QStringLiteral("Cash")), "Option1_0", {80, 30, 70, 24}, frame);
        put(new QComboBox, "Combo1", {180, 110, 100, 24})->addItem(QStringLiteral("نقداً"));
        put(new DatePicker, "DTPicker1", {290, 110, 100, 24});
        put(new FlexGrid, "FGrid", {180, 145, 210, 70});
        auto *line = put(new QFrame, "Line1", {20, 255, 100, 3});
        line->setFrameShape(QFrame::HLine);
        put(new QPushButton(QStringLiteral("First")), "cmdFirst", {10, 290, 60, 26});
        put(new QPushButton(QStringLiteral("Previous")), "cmdPrevious", {75, 290, 60, 26});
        put(new QPushButton(QStringLiteral("Next")), "cmdNext", {140, 290, 60, 26});
        if (allFour)
            put(new QPushButton(QStringLiteral("Last")), "cmdLast", {205, 290, 60, 26});
        auto *options = menuBar()->addMenu(QStringLiteral("Options"));
        options->setObjectName(QStringLiteral("mnuOptions"));
        options->addAction(QStringLiteral("Font"))->setObjectName(QStringLiteral("mnuFont"));
        options->addSeparator()->setObjectName(QStringLiteral("xSEP"));
        menuBar()->addAction(QStringLiteral("Exit "))->setObjectName(QStringLiteral("mnuExit"));
        statusBar()->setObjectName(QStringLiteral("StatusBar1"));
        panel = new QLabel(QStringLiteral("Save"));
        panel->setAlignment(Qt::AlignRight);
        statusBar()->addWidget(panel, 1);
    }

    QLabel *panel;

protected:
    void Form_Load() override { PrepareScreen(*this); }

private:
    template <typename Control>
    Control *put(Control *made, const char *name, QRect place, QWidget *parent = nullptr)
    {
        made->setParent(parent ? parent : surface());
        made->setObjectName(QLatin1String(name));
        made->setGeometry(place);
        return made;
    }
};
