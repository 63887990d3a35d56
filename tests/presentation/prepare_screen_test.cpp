#include "core/engine.h"
#include "platform/ui/controls.h"
#include "platform/ui/date_picker.h"
#include "platform/ui/flex_grid.h"
#include "presentation/prepare_screen.h"
#include "support/screens.h"

#include <QtCore/QMap>
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

using namespace Qt::Literals::StringLiterals;

namespace
{
/// A screen with a control of each kind, on a surface of 400 x 405 pixels.
class DemoScreen : public Screen
{
public:
    explicit DemoScreen(const QString &name = u"frmDemo"_s, bool allFour = true) : Screen(name)
    {
        setCentralWidget(new QWidget);
        surface()->setFixedSize(400, 405);
        setCaption(u"Family Members"_s);
        put(new QLabel(u"&Amount:"_s), "Label1", {10, 40, 70, 26})
            ->setAlignment(Qt::AlignHCenter | Qt::AlignVCenter);
        put(new QLineEdit(u"1000"_s), "txtAmount", {90, 40, 120, 24});
        put(new QPlainTextEdit(u"note"_s), "txtNote", {220, 40, 170, 60});
        put(new QCheckBox(u"Valid"_s), "Check1_0", {10, 75, 90, 24});
        auto *frame = put(new QGroupBox(u"Payment Method"_s), "Frame1", {10, 110, 160, 70});
        put(new QPushButton(u"Users"_s), "Command5", {10, 30, 60, 26}, frame);
        put(new QRadioButton(u"Cash"_s), "Option1_0", {80, 30, 70, 24}, frame);
        put(new QComboBox, "Combo1", {180, 110, 100, 24})->addItem(u"نقداً"_s);
        put(new DatePicker, "DTPicker1", {290, 110, 100, 24});
        put(new FlexGrid, "FGrid", {180, 145, 210, 70});
        put(new QFrame, "Line1", {20, 255, 100, 3})->setFrameShape(QFrame::HLine);
        const QString moves[] = {u"First"_s, u"Previous"_s, u"Next"_s, u"Last"_s};
        for (int i = 0; i < (allFour ? 4 : 3); ++i)
            put(new QPushButton(moves[i]), qPrintable(u"cmd"_s + moves[i]), {10 + 65 * i, 290, 60, 26});
        auto *options = menuBar()->addMenu(u"Options"_s);
        options->setObjectName(u"mnuOptions"_s);
        options->addAction(u"Font"_s)->setObjectName(u"mnuFont"_s);
        options->addSeparator()->setObjectName(u"xSEP"_s);
        menuBar()->addAction(u"Exit "_s)->setObjectName(u"mnuExit"_s);
        statusBar()->setObjectName(u"StatusBar1"_s);
        panel = new QLabel(u"Save"_s);
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

class PrepareScreenTest : public testing::Test
{
protected:
    PrepareScreenTest()
    {
        engine = {};
        engine.userFontName = u"Arial"_s;
        engine.userFontSize = 10;
        engine.userFontBold = true;
    }
    ~PrepareScreenTest() override { engine = {}; }
};

QMap<QString, int> leftsOf(const Screen &screen)
{
    QMap<QString, int> lefts;
    for (const QObject *object : controlsOf(screen)) {
        if (const auto *widget = qobject_cast<const QWidget *>(object))
            lefts.insert(widget->objectName(), widget->x());
    }
    return lefts;
}

TEST_F(PrepareScreenTest, TurnsAnArabicScreen)
{
    engine.isArabic = true;
    DemoScreen screen;
    screen.load();
    EXPECT_TRUE(screen.rightToLeft());
    EXPECT_EQ(screen.caption(), u"أفراد العائله"_s);
    const std::pair<const char *, QString> captions[] = {
        {"Label1", u"المبلغ"_s},  {"Check1_0", u"ساري"_s},       {"Frame1", u"طريقة الدفع"_s},
        {"Option1_0", u"نقداً"_s}, {"Command5", u"المستخدمين"_s}, {"mnuOptions", u"خيارات"_s},
        {"mnuFont", u"الحرف"_s},  {"mnuExit", u"Exit "_s},
    };
    for (const auto &[name, caption] : captions)
        EXPECT_EQ(textOf(screen, name), caption) << name;
    EXPECT_EQ(engine.textAreYouSure, u"هل أنت متأكد؟ "_s);
    EXPECT_EQ(engine.textSaveChanges, u"هل تريد حفظ هذه التحديثات؟"_s);
    EXPECT_EQ(engine.languageSuffix, u"ar"_s);

    // 400 - (left + width); grids, options and lines stay; a frame's controls mirror within it (160 wide).
    const QMap<QString, int> mirrored{
        {u"Label1"_s, 320},   {u"txtAmount"_s, 190}, {u"txtNote"_s, 10},      {u"Check1_0"_s, 300},
        {u"Frame1"_s, 230},   {u"Command5"_s, 90},   {u"Option1_0"_s, 80},    {u"Combo1"_s, 120},
        {u"DTPicker1"_s, 10}, {u"FGrid"_s, 180},     {u"Line1"_s, 20},        {u"cmdFirst"_s, 135},
        {u"cmdLast"_s, 330},  {u"cmdNext"_s, 265},   {u"cmdPrevious"_s, 200}, {u"StatusBar1"_s, 0},
        {u"mnuOptions"_s, 0},
    };
    EXPECT_EQ(leftsOf(screen), mirrored);
    const auto right = Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter;
    EXPECT_EQ(control<QLabel>(screen, "Label1").alignment(), right);
    EXPECT_EQ(control<QLineEdit>(screen, "txtAmount").alignment(), right);
    EXPECT_EQ(screen.panel->text(), u"Save"_s); // status bars are never touched
    EXPECT_EQ(screen.panel->alignment(), Qt::AlignRight);

    MirrorControls(screen);            // and back
    DemoScreen other(u"frmRevenue"_s); // one of the three that never mirror here
    other.load();
    EXPECT_EQ(leftsOf(screen), leftsOf(other));
    EXPECT_EQ(control<QLabel>(other, "Label1").x(), 10);
}

TEST_F(PrepareScreenTest, LeavesAnEnglishScreenInPlace)
{
    const auto designed = Qt::AlignHCenter | Qt::AlignVCenter;
    DemoScreen screen;
    screen.load();
    EXPECT_FALSE(screen.rightToLeft());
    EXPECT_EQ(textOf(screen, "Label1"), u"&Amount:"_s);
    EXPECT_EQ(control(screen, "Label1").x(), 10);
    EXPECT_EQ(control<QLabel>(screen, "Label1").alignment(), designed);
    EXPECT_TRUE(control(screen, "FGrid").isRightToLeft()); // in English too
    EXPECT_EQ(engine.textAreYouSure, u"Are you sure? "_s);
    EXPECT_EQ(engine.textSaveChanges, u"Do you want to save the changes?"_s);
    EXPECT_EQ(engine.languageSuffix, u"en"_s);
    for (const char *name : {"Label1", "txtAmount", "FGrid", "Command5", "StatusBar1"}) {
        const QFont font = control(screen, name).font();
        EXPECT_TRUE(font.families().constFirst() == u"Arial"_s && font.pointSize() == 10 && font.bold())
            << name;
    }

    DemoScreen three(u"frmThree"_s, false); // no exchange without all four
    three.load();
    MirrorControls(three);
    EXPECT_EQ(control(three, "cmdFirst").x(), 330);
    EXPECT_EQ(control(three, "cmdNext").x(), 200);
    EXPECT_EQ(control<QLabel>(three, "Label1").alignment(),
              Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignVCenter);
}

TEST_F(PrepareScreenTest, PaintsTheBandsAndLeavesTheFrameInTheGap)
{
    DemoScreen screen;
    screen.load();
    const auto groundAt = [&screen](int x, int y) {
        return screen.surface()->grab().toImage().pixelColor(x, y).name();
    };
    // 6075 twips: bands of 60 twips or 4 pixels, and 5 pixels of the frame left over at the bottom.
    const std::tuple<int, int, QColor> cases[] = {
        {200, 0, QColor(197, 97, 255)},    // band 1
        {5, 4 * 14, QColor(155, 55, 255)}, // band 15 is the last with a full blue
        {5, 4 * 33, QColor(98, 0, 198)},   // green is gone with band 34
        {5, 4 * 66 + 3, QColor(0, 0, 99)}, // red is gone with band 67
        {200, 399, QColor(0, 0, 0)},       // band 100
        {200, 402, QColor(128, 128, 128)}, // the grey strip at the bottom
        {200, 404, QColor(0, 0, 0)},       // the line along the edge
        {1, 402, QColor(255, 255, 255)},   // the white slice in the corner
    };
    for (const auto &[x, y, color] : cases)
        EXPECT_EQ(groundAt(x, y), color.name()) << x << ',' << y;

    // Style, a place in band 1, and one in band 100. The reversed last band reaches the edge.
    const std::tuple<int, QPoint, QPoint> styles[] = {{2, {200, 404}, {200, 0}},
                                                      {3, {0, 280}, {399, 280}},
                                                      {4, {399, 280}, {0, 280}},
                                                      {7, {200, 0}, {200, 399}}};
    for (const auto &[style, first, last] : styles) {
        screen.clearGround();
        PaintGradient(screen, 400, 303, 0, style);
        EXPECT_EQ(groundAt(first.x(), first.y()), QColor(255, 255, 0).name()) << style;
        EXPECT_EQ(groundAt(last.x(), last.y()), QColor(100, 3, 0).name()) << style;
    }
}

TEST_F(PrepareScreenTest, FindsTheLettersOfEveryLanguageInAnyFont)
{
    for (const QString &family : {u"Arial"_s, u"New Roman Times"_s, u"No Such Font"_s}) {
        engine.userFontName = family;
        DemoScreen screen;
        screen.load();
        for (const char16_t letter : {u'A', u'\u0645', u'\u0661'})
            EXPECT_TRUE(control(screen, "Label1").fontMetrics().inFont(letter)) << family.toStdString();
    }
}
} // namespace
