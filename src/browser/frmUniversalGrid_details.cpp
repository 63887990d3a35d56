#include "browser/frmUniversalGrid.h"
#include "core/engine.h"
#include "platform/runtime/runtime_error.h"
#include "platform/ui/dialogs.h"
#include "platform/ui/twips.h"
#include "presentation/vocabulary.h"
#include "store/ledger_tables.h"
#include "store/logical_tables.h"
#include "ui_frmUniversalGrid.h"

#include <QtWidgets/QHeaderView>
#include <QtWidgets/QScrollBar>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace
{

constexpr int cellPadding = 120; // twips
constexpr int columnBorder = 8;  // twips
constexpr int sideMargins = 240; // twips

/// How the shares' columns write a field; nothing for plain texts.
std::optional<DataFormat> dataFormatOf(const FieldInfo &field)
{
    if (field.type == FieldType::Date)
        return DataFormat{.format =
                              field.name == u"enteredon"_s ? u"hh:mm:ss yyyy/mm/dd"_s : u"yyyy/mm/dd"_s};
    if (field.type != FieldType::Boolean)
        return {};
    DataFormat format{.type = DataFormat::Type::Boolean, .trueValue = {}, .falseValue = {}};
    if (field.name == u"valid"_s) {
        format.trueValue = engine.isArabic ? u"ساري"_s : u"Valid"_s;
        format.falseValue = engine.isArabic ? u"ملغي"_s : u"Invalid"_s;
    } else if (field.name == u"creditordebit"_s) {
        format.trueValue = engine.isArabic ? u"عوائد"_s : u"Revenue"_s;
        format.falseValue = engine.isArabic ? u"مصاريف"_s : u"Expense"_s;
    }
    return format;
}

} // namespace

void frmUniversalGrid::mnuDetails_Click()
{
    GetTransactionId(m_ui->FGrid->row());
    engine.dbConnection->setCursorLocation(CursorLocation::Client);
    m_detail = Recordset::create();
    const QStringList tables = ledgerTables();
    for (const QString &table : tables) {
        m_detail->open(getstrsql(u"ledger"_s, table) + u" where transactionid="_s +
                           QString::number(m_currentTransaction),
                       engine.dbConnection, CursorType::Static, LockType::Optimistic);
        if (m_detail->recordCount() > 0)
            break;
        m_detail->close();
    }
    // Each call turns it around, and fills it also when that hides it: that is meant.
    const bool shown = m_ui->DGrid->isHidden();
    m_ui->DGrid->setDataSource(m_detail);
    FormatDetailsGrid();
    for (int column = 0; column < m_ui->DGrid->columnCount(); ++column)
        m_ui->DGrid->setCaption(column, translate(m_ui->DGrid->caption(column)));
    placeDetailsGrid();
    m_ui->DGrid->setVisible(shown);
    m_ui->DGrid->raise();
}

void frmUniversalGrid::FormatDetailsGrid()
{
    DataGrid &grid = *m_ui->DGrid;
    m_detailsWidth = 0;
    for (int column = 0; column < grid.columnCount(); ++column) {
        if (const auto format = dataFormatOf(m_detail->field(column)))
            grid.setDataFormat(column, *format);
        // Wide enough also for the translated caption that it gets in the end.
        int widest =
            std::max(grid.textWidth(grid.caption(column)), grid.textWidth(translate(grid.caption(column))));
        for (int row = 1; row <= m_detail->recordCount(); ++row)
            widest = std::max(widest, grid.textWidth(grid.cellText(column, row)));
        grid.setColWidth(column, widest + cellPadding);
        m_detailsWidth += widest + cellPadding + columnBorder;
    }
}

/// Right under the picked row; above it where the screen ends.
void frmUniversalGrid::placeDetailsGrid()
{
    const FlexGrid &main = *m_ui->FGrid;
    DataGrid &grid = *m_ui->DGrid;
    const int inner = scaleWidth();
    const bool wide = inner < m_detailsWidth;
    const int width = pixelsFromTwips(wide ? inner - sideMargins : m_detailsWidth);
    const int left = wide ? main.x() : pixelsFromTwips((inner - m_detailsWidth) / 2);

    const QRect row = main.cellRect(main.row(), main.col()).translated(main.pos());
    const int content = grid.horizontalHeader()->sizeHint().height() + grid.verticalHeader()->length() +
                        (wide ? grid.horizontalScrollBar()->sizeHint().height() : 0) + 2 * grid.frameWidth();
    const int below = m_ui->picButtons->y() - row.bottom() - 1;
    const int above = row.top() - main.y();
    const bool under = content <= below || below >= above;
    const int height = std::min(content, under ? below : above);
    grid.setGeometry(left, under ? row.bottom() + 1 : row.top() - height, width, height);
}

void frmUniversalGrid::DGrid_LostFocus()
{
    m_ui->DGrid->hide();
    if (m_detail && m_detail->isOpen())
        m_detail->close();
    m_detail.reset();
}

void frmUniversalGrid::DGrid_Change()
{
    showMessage(u"dgrid changed"_s); // tells a fault of the program: that is meant
}
