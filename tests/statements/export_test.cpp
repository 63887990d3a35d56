#include "platform/runtime/runtime_error.h"
#include "platform/spreadsheet/workbook.h"
#include "platform/ui/progress.h"
#include "statements/export_rows.h"
#include "support/screens.h"
#include "support/store_fixture.h"

#include <QtCore/QDir>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QProgressBar>

namespace
{

class ExportTest : public StoreFixture
{
protected:
    ExportTest()
    {
        execute({u"insert into ledger (name,amount) values ('علي',-12.5)"_s});
        rows->open(u"select id,name,amount from ledger"_s, engine.dbConnection, CursorType::Static);
    }

    /// No path cancels the dialog, no text tells nothing.
    void exportTo(const std::optional<QString> &path, const QString &text, ExportFailure failure,
                  bool declined = false)
    {
        const auto noHourglass = [] { EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr); };
        dialogs.expectSaveFile(u"proposed.xls"_s, path).meanwhile(noHourglass);
        if (declined)
            dialogs.expectNo(u"The file already exists. Replace it?  الملف موجود مسبقاً. هل تريد استبداله؟"_s)
                .meanwhile(noHourglass);
        if (!text.isEmpty())
            dialogs.expectMessage(text).withIcon(MessageIcon::None);
        exportRows(*rows, u"proposed.xls"_s, failure);
        noHourglass();
        EXPECT_TRUE(rows->eof());
    }

    void addRows(int count)
    {
        engine.dbConnection->beginTrans();
        execute(QStringList(count, u"insert into ledger (name,amount) values ('x',1)"_s));
        engine.dbConnection->commitTrans();
        rows->requery();
    }

    const QString done = u"Export complete..   تم التصدير بنجاح"_s;
    const QString refused = u"Cancelled.. تم الإلغاء"_s;
    const RecordsetPtr rows = Recordset::create();
    ScriptedDialogs dialogs;
};

TEST_F(ExportTest, TellsWhatBecameOfTheFile)
{
    const QString path = folder() + u"/out.txt"_s;
    const QString lost = folder() + u"/nosuch/out.xls"_s;
    QString reason;
    try {
        Workbook().saveAs(lost);
    } catch (const RuntimeError &error) {
        reason = error.numberText() + u" -> "_s + error.description();
    }
    for (const ExportFailure failure : {ExportFailure::Silent, ExportFailure::Told}) {
        SCOPED_TRACE(int(failure));
        exportTo({}, {}, failure);
        QFile::remove(path);
        exportTo(path, done, failure);
        writeFile(path, "old");
        exportTo(path, refused, failure, true);
        EXPECT_EQ(bytesOf(path), "old");
        exportTo(lost, failure == ExportFailure::Told ? reason : refused, failure);
    }
}

TEST_F(ExportTest, ALongSaveShowsHowFarItIsAndCanBeStopped)
{
    addRows(3000);
    const QDir exports(folder() + u"/exports"_s);
    exports.mkpath(u"."_s);
    for (const QString &name : {u"out.txt"_s, u"out.xls"_s, u"out.xlsx"_s}) {
        SCOPED_TRACE(name.toStdString());
        const QString path = exports.filePath(name);
        writeFile(path, "old");
        for (const bool stopped : {true, false}) {
            rows->moveFirst();
            dialogs.expectSaveFile(u"proposed.xls"_s, path);
            dialogs.expectYes(
                u"The file already exists. Replace it?  الملف موجود مسبقاً. هل تريد استبداله؟"_s);
            onModal<QDialog>([stopped](QDialog &notice) {
                const int percent = notice.findChild<QProgressBar *>()->value();
                EXPECT_GT(percent, 0);
                EXPECT_EQ(notice.findChild<QLabel *>()->text(), u"Saving rows : %1 %"_s.arg(percent));
                if (stopped)
                    pressKey(notice, Qt::Key_Escape);
            });
            dialogs.expectMessage(stopped ? refused : done);
            setProgressPatience(0);
            exportRows(*rows, u"proposed.xls"_s, ExportFailure::Told);
            setProgressPatience(2000);
            EXPECT_EQ(bytesOf(path) == "old", stopped);
        }
        QFile::remove(path);
        EXPECT_TRUE(exports.isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
    }
}

TEST_F(ExportTest, ALineTellsHowFarALongWorkIs)
{
    addRows(600);
    QLabel line(u"before"_s);
    setProgressPatience(0);
    {
        const ProgressLine waiting(&line, u"Waiting"_s);
        Recordset::create()->open(
            u"select (select count(*) from ledger where amount<>a.id) as n from ledger as a"_s,
            engine.dbConnection);
        EXPECT_EQ(line.text(), u"Waiting : 0:00"_s); // told by the engine in the middle of the statement
        readUnderLine(&line, {}, *rows, [&] {
            ProgressLine reading(&line, u"Reading"_s);
            reading.tell(4096);
            EXPECT_EQ(line.text(), u"Reading : 4096"_s);
        });
        EXPECT_EQ(line.text(), u"Waiting : 0:00"_s);
        EXPECT_NE(QGuiApplication::overrideCursor(), nullptr);
    }
    setProgressPatience(2000);
    EXPECT_EQ(line.text(), u"before"_s);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

} // namespace
