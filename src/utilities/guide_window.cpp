#include "utilities/guide_window.h"

#include "core/engine.h"
#include "platform/ui/controls.h"
#include "platform/ui/fonts.h"

#include <QtCore/QFile>
#include <QtCore/QHash>
#include <QtGui/QKeyEvent>
#include <QtGui/QScreen>
#include <QtGui/QWindow>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTextBrowser>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

// Outside of every namespace, as the toolkit asks. A static library's resources are not there by themselves.
static void loadGuide()
{
    Q_INIT_RESOURCE(guide);
}

namespace
{

const QString firstPage = u"index"_s;

QUrl urlOf(const QString &page, bool arabic)
{
    return QUrl(u"qrc:/guide/%1/%2.md"_s.arg(arabic ? u"ar"_s : u"en"_s, page));
}

} // namespace

/// Shows a page with its pictures no wider than the window.
class GuideView : public QTextBrowser
{
public:
    GuideView()
    {
        // One that came while a page is read would change the width and have it read anew in the middle.
        setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    }

    QVariant loadResource(int type, const QUrl &name) override
    {
        QVariant resource = QTextBrowser::loadResource(type, name);
        if (type == QTextDocument::MarkdownResource) {
            // Other viewers are told the direction by these two lines.
            return resource.toByteArray().replace("<div dir=\"rtl\">\n", "").replace("</div>\n", "");
        }
        if (type != QTextDocument::ImageResource)
            return resource;
        QImage picture = QImage::fromData(resource.toByteArray());
        // One pixel of the picture is one of the page; it may stand in a list.
        const double around = 2 * document()->documentMargin() + document()->indentWidth();
        const double width = std::min<double>(picture.width(), viewport()->width() - around);
        const qreal scale = devicePixelRatioF();
        picture = picture.scaledToWidth(std::max(1, qRound(width * scale)), Qt::SmoothTransformation);
        picture.setDevicePixelRatio(scale);
        return picture;
    }

protected:
    void resizeEvent(QResizeEvent *event) override
    {
        QTextBrowser::resizeEvent(event);
        if (event->size().width() == event->oldSize().width() || source().isEmpty())
            return;
        const double place =
            double(verticalScrollBar()->value()) / std::max(1, verticalScrollBar()->maximum());
        reload();
        verticalScrollBar()->setValue(qRound(place * verticalScrollBar()->maximum()));
    }
};

QString guidePageOf(const QString &screenName)
{
    static const QHash<QString, QString> pages{
        {u"frmLogin"_s, u"first-start"_s},     {u"frmMain"_s, firstPage},
        {u"frmRevenue"_s, u"revenue"_s},       {u"frmExpense"_s, u"expense"_s},
        {u"frmChanges"_s, u"browsing"_s},      {u"frmUniversalGrid"_s, u"browsing"_s},
        {u"frmSelectDates"_s, u"browsing"_s},  {u"frmMembers"_s, u"family"_s},
        {u"frmUsers"_s, u"users"_s},           {u"frmNewUser"_s, u"users"_s},
        {u"frmChangePassword"_s, u"users"_s},  {u"frmReports"_s, u"statements"_s},
        {u"frmStatement"_s, u"statements"_s},  {u"frmGStatement"_s, u"statements"_s},
        {u"ReportPreview"_s, u"statements"_s}, {u"frmGenerateData"_s, u"practising"_s},
        {u"frmDateConversion"_s, u"dates"_s},  {u"frmAbout"_s, firstPage},
        {u"frmInformation"_s, firstPage},      {u"GuideWindow"_s, firstPage},
    };
    return pages.value(screenName);
}

void showGuide(Screen &asking)
{
    auto *guide = &theScreen<GuideWindow>();
    if (guide->isArabic() != engine.isArabic) {
        guide->unload();
        guide = &theScreen<GuideWindow>();
    }
    guide->showBeside(asking, guidePageOf(asking.objectName()));
}

GuideWindow::GuideWindow() : Screen(u"GuideWindow"_s)
{
    loadGuide();
    setRightToLeft(engine.isArabic);
    setCaption(isArabic() ? u"دليل الاستخدام"_s : u"Guide"_s);
    setFont(
        readableFont(engine.userFontName, std::clamp<int>(engine.userFontSize, 8, 12), engine.userFontBold));
    build();
}

QPushButton *GuideWindow::addButton(QHBoxLayout &row, const char *name, const QString &text)
{
    auto *button = new QPushButton(text);
    button->setObjectName(QLatin1StringView(name));
    button->setAutoDefault(false);
    button->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Minimum); // as high as the row
    row.addWidget(button);
    return button;
}

void GuideWindow::build()
{
    const bool arabic = isArabic();
    auto *ground = new QWidget;
    setCentralWidget(ground);
    auto *layout = new QVBoxLayout(ground);
    layout->setContentsMargins(8, 8, 8, 8);
    auto *above = new QHBoxLayout;

    m_view = new GuideView;
    m_view->setObjectName(u"page"_s);
    m_view->setAccessibleName(caption());
    m_view->document()->setDocumentMargin(16);
    QTextOption option = m_view->document()->defaultTextOption();
    option.setTextDirection(layoutDirection());
    m_view->document()->setDefaultTextOption(option);
    // The family of the letters comes first, or the marks of lists would stand higher than their lines.
    m_view->setFont(readableFont(arabic ? u"Noto Sans Arabic"_s : u"Noto Sans"_s,
                                 std::clamp<int>(engine.userFontSize, 10, 12), false));

    // A letter that is marked for a key would not join the next one: none in Arabic.
    auto *contents = addButton(*above, "cmdContents", arabic ? u"المحتويات"_s : u"&Contents"_s);
    m_back = addButton(*above, "cmdBack", arabic ? u"رجوع"_s : u"&Back"_s);
    m_forward = addButton(*above, "cmdForward", arabic ? u"تقدم"_s : u"&Forward"_s);
    above->addSpacing(16);
    m_find = new QLineEdit;
    m_find->setObjectName(u"txtFind"_s);
    setAccessibleText(m_find, arabic ? u"النص المطلوب"_s : u"Text to find"_s);
    m_find->setPlaceholderText(m_find->accessibleName());
    // The letters of a second font can stand higher than the box's own.
    const QFontMetrics letters(font());
    m_find->setMinimumSize(letters.horizontalAdvance(m_find->placeholderText()) + 24,
                           QFontInfo(font()).pixelSize() * 5 / 2 + 2);
    above->addWidget(m_find, 1);
    auto *findButton = addButton(*above, "cmdFind", arabic ? u"بحث"_s : u"Fi&nd"_s);
    above->addSpacing(16);
    auto *close = addButton(*above, "cmdClose", arabic ? u"إغلاق"_s : u"C&lose"_s);

    connect(contents, &QPushButton::clicked, this,
            [this] { m_view->setSource(urlOf(firstPage, isArabic())); });
    connect(m_back, &QPushButton::clicked, m_view, &QTextBrowser::backward);
    connect(m_forward, &QPushButton::clicked, m_view, &QTextBrowser::forward);
    connect(m_view, &QTextBrowser::historyChanged, this, &GuideWindow::tellHistory);
    connect(m_find, &QLineEdit::returnPressed, this, &GuideWindow::find);
    connect(findButton, &QPushButton::clicked, this, &GuideWindow::find);
    connect(close, &QPushButton::clicked, this, &GuideWindow::unload);
    tellHistory();

    layout->addLayout(above);
    layout->addWidget(m_view, 1);

    const QSize room = screen()->availableSize();
    resize(std::min(860, room.width() - 40), std::min(820, room.height() - 80));
}

void GuideWindow::showBeside(Screen &asking, const QString &page)
{
    load();
    // A modal screen shuts out every window but those that belong to it; a window that is shown can't change
    // to whom it belongs.
    winId();
    QWindow *owner = asking.isModal() ? asking.windowHandle() : nullptr;
    if (&asking != this && windowHandle()->transientParent() != owner) {
        hide();
        windowHandle()->setTransientParent(owner);
    }
    showModeless();
    m_view->setSource(urlOf(page, isArabic()));
    m_view->setFocus();
}

bool GuideWindow::Form_KeyDown(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        unload();
    else if (event->matches(QKeySequence::Find))
        m_find->setFocus();
    else if (event->matches(QKeySequence::FindNext))
        find();
    else
        return false;
    return true;
}

/// From the place that was found last, and from the beginning behind the end.
void GuideWindow::find()
{
    if (m_find->text().isEmpty()) {
        m_find->setFocus();
    } else if (!m_view->find(m_find->text())) {
        m_view->moveCursor(QTextCursor::Start);
        m_view->find(m_find->text());
    }
}

void GuideWindow::tellHistory()
{
    m_back->setEnabled(m_view->isBackwardAvailable());
    m_forward->setEnabled(m_view->isForwardAvailable());
}
