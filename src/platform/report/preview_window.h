#pragma once

#include "platform/report/report_output.h"
#include "platform/ui/screen.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>

class PageView;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;

/// The window that shows a report. Its pages are counted piece by piece while nothing else is to be done.
///
/// Controls: `page` (the sheet), `cmdFirst`, `cmdPrevious`, `txtPage`, `lblPages`, `cmdNext`, `cmdLast`,
/// `cmdZoomIn`, `cmdZoomOut`, `cmdFitWidth`, `cmdFitPage`, `cmdPrint`, `cmdSave`, `cmdClose`, `lblStatus`.
/// Keys: Page Up, Page Down, Home, End, +, -, Ctrl+P, Ctrl+S; Escape stops an output, else closes.
class PreviewWindow : public Screen
{
    Q_OBJECT

public:
    /// @throws RuntimeError as ReportPages
    explicit PreviewWindow(const Report &report);
    ~PreviewWindow() override;

protected:
    void Form_Load() override;
    bool Form_QueryUnload() override;
    void Form_Unload() override;
    bool Form_KeyDown(QKeyEvent *event) override;

private:
    void build();
    QPushButton *addButton(QHBoxLayout &row, const char *name, const QString &text,
                           void (PreviewWindow::*command)());
    void countOn();
    void showPage(int page);
    bool lookFor(int page);
    void tellPages();
    /// Runs a command, unless an output is under way, and tells its failure behind that text.
    template <typename Command>
    void run(const QString &failureText, Command &&command);
    template <typename Output>
    void putOut(const QString &success, Output &&output);
    bool goOn(int page);
    QString proposedFileName() const;

    void first();
    void previous();
    void next();
    void last();
    void toTypedPage();
    void zoomIn();
    void zoomOut();
    void fitWidth();
    void fitPage();
    void print();
    void save();

    Report m_report;
    const PreviewTexts &m_texts = m_report.previewTexts;
    std::unique_ptr<ReportPages> m_pages;
    PageView *m_view = nullptr;
    QLineEdit *m_number = nullptr;
    QLabel *m_count = nullptr;
    QLabel *m_status = nullptr;
    QTimer m_counting;
    bool m_working = false; ///< an output is under way
    bool m_stop = false;
    QElapsedTimer m_sinceEvents;
};
