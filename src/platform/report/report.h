#pragma once

#include "platform/database/recordset.h"
#include "platform/ui/data_format.h"

#include <QtCore/QRect>
#include <QtCore/QString>
#include <QtGui/QPixmap>

#include <vector>

/// One thing that a section of a report draws. All lengths are twips (1/1440 inch).
struct ReportControl {
    enum class Type { Label, TextBox, Function, Line, Image };
    /// Where a text stands in its place, in the direction in which it reads: English begins at the left.
    enum class Alignment { Start, Center, End };

    Type type = Type::Label;
    QString name;
    /// Within its section, on a page that is read from left to right; one from right to left is the mirror
    /// image. Of a line: from its top left to its bottom right corner.
    QRect place;
    /// Of a label. `%i` stands for the report's title, `%p` the page's number, `%P` the number of pages, `%d`
    /// and `%D` the short and the long date, `%t` and `%T` the time of printing.
    QString caption = {};
    QString dataField = {};     ///< of a text box, and of a function: the field that it sums over all rows
    DataFormat dataFormat = {}; ///< of a text box and a function
    // Font and colour of what shows text.
    QString fontName = QStringLiteral("Arial");
    int fontSize = 8; ///< points
    bool fontBold = false;
    qint32 foreColor = 0;     ///< 0xBBGGRR
    bool rightToLeft = false; ///< the direction in which a text box reads
    Alignment alignment = Alignment::Start;
    bool canGrow = false; ///< a text longer than its place wraps and makes the section higher
    QPixmap image = {};   ///< of an image

    /// The kind as reports have always named it: "RptLabel", "RptTextBox", "RptFunction", "RptLine",
    /// "RptImage".
    QString typeName() const;
};

/// One of the five bands of a report.
struct ReportSection {
    enum class Kind { ReportHeader, PageHeader, Detail, PageFooter, ReportFooter };

    Kind kind = Kind::Detail;
    QString name;
    int height = 0; ///< twips
    std::vector<ReportControl> controls;
};

/// What the preview window says. `&` marks the key of the next letter, `%1` is filled in.
struct PreviewTexts {
    QString first = QStringLiteral("&First");
    QString previous = QStringLiteral("&Previous");
    QString next = QStringLiteral("&Next");
    QString last = QStringLiteral("&Last");
    QString page = QStringLiteral("Pa&ge");
    QString ofPages = QStringLiteral("of %1");
    QString ofMorePages = QStringLiteral("of more than %1"); ///< while they are still counted
    QString zoomIn = QStringLiteral("Zoom &in");
    QString zoomOut = QStringLiteral("Zoom &out");
    QString fitWidth = QStringLiteral("Fit &width");
    QString fitPage = QStringLiteral("Fi&t page");
    QString print = QStringLiteral("P&rint...");
    QString save = QStringLiteral("&Save as PDF...");
    QString close = QStringLiteral("&Close");
    QString sheet = QStringLiteral("Page of the report"); ///< for a screen reader
    QString pdfFiles = QStringLiteral("PDF files");       ///< the kind of file in the save dialog
    QString replace = QStringLiteral("The file \"%1\" is there already. Replace it?");
    QString working = QStringLiteral("Page %1. Escape stops.");
    QString stopped = QStringLiteral("Stopped");
    QString saved = QStringLiteral("Saved: %1"); ///< the file's name
    QString printed = QStringLiteral("Printed");
    QString printerRefused = QStringLiteral("The printer did not take the report.");
    QString notSaved = QStringLiteral("The report could not be saved.");
    QString notShown = QStringLiteral("This page can't be shown.");
};

/// A banded report: a design, and the rows that it is shown with. The design is data and may be changed until
/// the report is shown. The report header stands once at the beginning, the page header and footer on every
/// page, the detail section once per row and the report footer behind the last row; a row is never cut by the
/// end of a page. `rightToLeft` turns the whole page.
struct Report {
    std::vector<ReportSection> sections;
    QString title;   ///< what `%i` shows; lines parted by CR LF
    QString caption; ///< title of the preview window
    bool rightToLeft = false;
    QString fontName = QStringLiteral("Arial"); ///< of the preview window and of what has no font of its own
    int fontSize = 8;                           ///< points
    bool fontBold = false;
    int leftMargin = 1440; ///< twips
    int rightMargin = 1440;
    /// The rows. The report reads the rows of the filter in force by itself; the set's current row stays.
    RecordsetPtr dataSource;
    PreviewTexts previewTexts = {};
};
