#include "platform/report/preview_window.h"

#include "platform/report/page_view.h"
#include "platform/runtime/runtime_error.h"
#include "platform/ui/controls.h"
#include "platform/ui/dialogs.h"
#include "platform/ui/fonts.h"
#include "platform/ui/hourglass.h"
#include "platform/ui/wait.h"

#include <QtCore/QFileInfo>
#include <QtCore/QScopeGuard>
#include <QtCore/QScopedValueRollback>
#include <QtGui/QKeyEvent>
#include <QtGui/QScreen>
#include <QtPrintSupport/QPrinter>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>
#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr int rowsCountedAtOnce = 400;
} // namespace

PreviewWindow::PreviewWindow(const Report &report)
    : Screen(u"ReportPreview"_s), m_report(report),
      m_pages(std::make_unique<ReportPages>(report, reportPaper()))
{
    build();
}

PreviewWindow::~PreviewWindow() = default;

QPushButton *PreviewWindow::addButton(QHBoxLayout &row, const char *name, const QString &text,
                                      void (PreviewWindow::*command)())
{
    auto *button = new QPushButton(text);
    button->setObjectName(QLatin1StringView(name));
    button->setAutoDefault(false);
    button->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
    row.addWidget(button);
    connect(button, &QPushButton::clicked, this, command);
    return button;
}

void PreviewWindow::build()
{
    setCaption(m_report.caption.simplified());
    setRightToLeft(m_report.rightToLeft);
    setFont(readableFont(m_report.fontName, std::clamp(m_report.fontSize, 8, 12), m_report.fontBold));

    auto *ground = new QWidget;
    setCentralWidget(ground);
    auto *layout = new QVBoxLayout(ground);
    layout->setContentsMargins(8, 8, 8, 8);
    auto *above = new QHBoxLayout;
    auto *below = new QHBoxLayout;

    m_view = new PageView(*m_pages, m_texts.notShown);
    m_view->setObjectName(u"page"_s);
    m_view->setAccessibleName(m_texts.sheet);
    connect(m_view, &PageView::leftPage, this, [this](int step) {
        const int page = m_view->page() + step;
        run(m_texts.notShown, [&] { showPage(page); });
        if (step < 0 && m_view->page() == page)
            m_view->verticalScrollBar()->setValue(m_view->verticalScrollBar()->maximum());
    });

    addButton(*above, "cmdPrint", m_texts.print, &PreviewWindow::print);
    addButton(*above, "cmdSave", m_texts.save, &PreviewWindow::save);
    above->addSpacing(16);
    addButton(*above, "cmdZoomIn", m_texts.zoomIn, &PreviewWindow::zoomIn);
    addButton(*above, "cmdZoomOut", m_texts.zoomOut, &PreviewWindow::zoomOut);
    addButton(*above, "cmdFitWidth", m_texts.fitWidth, &PreviewWindow::fitWidth);
    addButton(*above, "cmdFitPage", m_texts.fitPage, &PreviewWindow::fitPage);
    above->addStretch();
    addButton(*above, "cmdClose", m_texts.close, &PreviewWindow::unload)->setProperty("cancel", true);

    addButton(*below, "cmdFirst", m_texts.first, &PreviewWindow::first);
    addButton(*below, "cmdPrevious", m_texts.previous, &PreviewWindow::previous);
    auto *pageLabel = new QLabel(m_texts.page);
    m_number = new QLineEdit;
    m_number->setObjectName(u"txtPage"_s);
    m_number->setMaxLength(7);
    m_number->setFixedWidth(fontMetrics().horizontalAdvance(u"0000000"_s) + 16);
    m_number->setAlignment(Qt::AlignCenter);
    takeAsciiDigits(m_number);
    pageLabel->setBuddy(m_number);
    setAccessibleText(m_number, m_texts.page);
    m_count = new QLabel;
    m_count->setObjectName(u"lblPages"_s);
    below->addWidget(pageLabel);
    below->addWidget(m_number);
    below->addWidget(m_count);
    addButton(*below, "cmdNext", m_texts.next, &PreviewWindow::next);
    addButton(*below, "cmdLast", m_texts.last, &PreviewWindow::last);
    below->addSpacing(16);
    m_status = new QLabel;
    m_status->setObjectName(u"lblStatus"_s);
    m_status->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    below->addWidget(m_status, 1);
    connect(m_number, &QLineEdit::returnPressed, this, &PreviewWindow::toTypedPage);
    connect(m_number, &QLineEdit::editingFinished, this, &PreviewWindow::tellPages);

    layout->addLayout(above);
    layout->addWidget(m_view, 1);
    layout->addLayout(below);

    const QSize room = screen()->availableSize();
    resize(std::min(920, room.width() - 40), std::min(1000, room.height() - 80));
}

void PreviewWindow::Form_Load()
{
    showPage(0);
    m_view->setFocus();
    connect(&m_counting, &QTimer::timeout, this, &PreviewWindow::countOn);
    m_counting.start();
}

bool PreviewWindow::Form_QueryUnload()
{
    m_stop = true;
    return !m_working;
}

void PreviewWindow::Form_Unload()
{
    m_counting.stop();
}

bool PreviewWindow::Form_KeyDown(QKeyEvent *event)
{
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier);
    const bool plain = modifiers == Qt::NoModifier;
    const bool control = modifiers == Qt::ControlModifier;
    const bool inNumber = m_number->hasFocus();
    switch (event->key()) {
    case Qt::Key_PageUp:
        previous();
        return true;
    case Qt::Key_PageDown:
        next();
        return true;
    case Qt::Key_Home:
        if (inNumber)
            return false;
        first();
        return true;
    case Qt::Key_End:
        if (inNumber)
            return false;
        last();
        return true;
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        if (!plain && !control)
            return false;
        zoomIn();
        return true;
    case Qt::Key_Minus:
        if (!plain && !control)
            return false;
        zoomOut();
        return true;
    case Qt::Key_P:
        if (!control)
            return false;
        print();
        return true;
    case Qt::Key_S:
        if (!control)
            return false;
        save();
        return true;
    case Qt::Key_Escape:
        unload();
        return true;
    default:
        return false;
    }
}

void PreviewWindow::countOn()
{
    try {
        m_pages->findPages(rowsCountedAtOnce);
    } catch (const RuntimeError &) {
        m_counting.stop(); // the page of the bad row tells about it
        return;
    }
    if (m_pages->allFound())
        m_counting.stop();
    tellPages();
}

void PreviewWindow::tellPages()
{
    const QString &text = m_pages->allFound() ? m_texts.ofPages : m_texts.ofMorePages;
    const QString count = text.arg(m_pages->pagesFound());
    if (m_count->text() != count)
        m_count->setText(count);
    if (!m_number->hasFocus())
        m_number->setText(QString::number(m_view->page() + 1));
}

/// Looks for a page, with the window alive when that takes long; stopped, it leaves the one on show.
void PreviewWindow::showPage(int page)
{
    if (!lookFor(page))
        return;
    if (m_pages->hasPage(page) && page != m_view->page())
        m_view->showPage(page);
    tellPages();
    m_number->setText(QString::number(m_view->page() + 1));
}

bool PreviewWindow::lookFor(int page)
{
    const auto isFound = [&] { return m_pages->allFound() || page < m_pages->pagesFound(); };
    if (isFound())
        return true;
    const QScopedValueRollback working(m_working, true);
    const Hourglass shown;
    m_stop = false;
    m_sinceEvents.start();
    const auto finish = qScopeGuard([this] { m_status->setText(m_stop ? m_texts.stopped : QString()); });
    while (!isFound() && goOn(m_pages->pagesFound() - 1))
        m_pages->findPages(rowsCountedAtOnce);
    return !m_stop;
}

template <typename Command>
void PreviewWindow::run(const QString &failureText, Command &&command)
{
    if (m_working)
        return;
    try {
        command();
    } catch (const RuntimeError &error) {
        if (!runtime_errors::isCancelled(error))
            showMessage(failureText + u"\n\n"_s + error.description(), MessageIcon::Critical);
    }
}

/// Runs an output with the window alive; it can be stopped meanwhile.
template <typename Output>
void PreviewWindow::putOut(const QString &success, Output &&output)
{
    m_stop = false;
    m_sinceEvents.start();
    m_status->clear();
    try {
        const QScopedValueRollback working(m_working, true);
        const Hourglass shown;
        output([this](int page) { return goOn(page); });
    } catch (const RuntimeError &error) {
        m_status->setText(runtime_errors::isCancelled(error) ? m_texts.stopped : QString());
        throw;
    }
    m_status->setText(success);
}

bool PreviewWindow::goOn(int page)
{
    constexpr int pause = 100; // ms
    if (m_sinceEvents.elapsed() >= pause) {
        m_status->setText(m_texts.working.arg(page + 1));
        serveEvents();
        m_sinceEvents.start();
    }
    return !m_stop;
}

void PreviewWindow::first()
{
    run(m_texts.notShown, [this] { showPage(0); });
}

void PreviewWindow::previous()
{
    run(m_texts.notShown, [this] { showPage(m_view->page() - 1); });
}

void PreviewWindow::next()
{
    run(m_texts.notShown, [this] { showPage(m_view->page() + 1); });
}

void PreviewWindow::last()
{
    run(m_texts.notShown, [this] {
        if (lookFor(std::numeric_limits<int>::max()))
            showPage(m_pages->count() - 1);
    });
}

void PreviewWindow::toTypedPage()
{
    run(m_texts.notShown, [this] {
        const int typed = m_number->text().trimmed().toInt();
        showPage(typed - 1);
        m_number->selectAll();
    });
}

void PreviewWindow::zoomIn()
{
    m_view->zoomIn();
}

void PreviewWindow::zoomOut()
{
    m_view->zoomOut();
}

void PreviewWindow::fitWidth()
{
    m_view->fitWidth();
}

void PreviewWindow::fitPage()
{
    m_view->fitPage();
}

void PreviewWindow::print()
{
    run(m_texts.printerRefused, [this] {
        QPrinter printer(QPrinter::HighResolution);
        printer.setPageLayout(reportPaper());
        askPrint(printer);
        if (!printer.pageLayout().isEquivalentTo(m_pages->paper())) {
            setReportPaper(printer.pageLayout());
            auto pages = std::make_unique<ReportPages>(m_report, reportPaper());
            m_view->setPages(*pages);
            m_pages = std::move(pages);
            m_counting.start();
            tellPages();
        }
        putOut(m_texts.printed,
               [&](const PageProgress &progress) { printReport(m_report, printer, progress); });
    });
}

QString PreviewWindow::proposedFileName() const
{
    constexpr int longest = 60;
    QString name = (m_report.title.isEmpty() ? m_report.caption : m_report.title).simplified();
    name.removeIf([](QChar c) { return u"/\\:*?\"<>|%"_s.contains(c) || !c.isPrint(); });
    name = name.simplified().left(longest).trimmed();
    return (name.isEmpty() ? u"report"_s : name) + u".pdf"_s;
}

void PreviewWindow::save()
{
    run(m_texts.notSaved, [this] {
        const QString path = askSaveFile({proposedFileName(), m_texts.pdfFiles + u"|*.pdf"_s, u"pdf"_s});
        const QString name = QFileInfo(path).fileName();
        if (QFileInfo::exists(path) && !askYesNo(m_texts.replace.arg(name)))
            return;
        putOut(m_texts.saved.arg(name), [&](const PageProgress &progress) {
            saveReportAsPdf(m_report, path, m_pages->paper(), progress);
        });
    });
}
