#include "platform/runtime/runtime_error.h"
#include "support/child_process.h"
#include "support/failures.h"
#include "support/printing.h"
#include "support/scripted_dialogs.h"
#include "workbook_reading.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/inotify.h>

#include <csignal>
#include <fcntl.h>

namespace
{

const QString replaceQuestion =
    u"The file already exists. Replace it?  الملف موجود مسبقاً. هل تريد استبداله؟"_s;

/// A workbook's saving, and that it leaves nothing but what it should in its folder.
class SavingTest : public testing::Test
{
protected:
    SavingTest()
    {
        for (int row = 1; row <= 1000; ++row) {
            book.setCell(row, 1, u"A text of row %1 that no other row has"_s.arg(row * 7919));
            book.setCell(row, 2, row / 7.0);
        }
    }
    QString path(const QString &name) const { return m_folder.filePath(name); }
    QStringList files() const
    {
        return QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    /// The number and description of the failure.
    QString failureAt(const QString &target)
    {
        try {
            book.saveAs(target);
        } catch (const RuntimeError &error) {
            return error.numberText() + u": "_s + error.description();
        }
        return {};
    }

    QTemporaryDir m_folder;
    ScriptedDialogs dialogs;
    Workbook book;
};

TEST_F(SavingTest, AsksBeforeItReplaces)
{
    for (const char *name : {"x.xls", "x.xlsx", "x.txt"}) {
        const QString target = path(QLatin1String(name));
        writeFile(target, "old");
        dialogs.expectNo(replaceQuestion);
        EXPECT_EQ(failureAt(target), u"1004: Method 'SaveAs' of object '_Workbook' failed"_s);
        EXPECT_EQ(bytesOf(target), "old");
        dialogs.expectYes(replaceQuestion);
        EXPECT_EQ(failureAt(target), QString());
        EXPECT_NE(bytesOf(target), "old");
    }
    EXPECT_TRUE(QFile::link(u"x.txt"_s, path(u"link.txt"_s)));
    dialogs.expectYes(replaceQuestion);
    EXPECT_EQ(failureAt(path(u"link.txt"_s)), QString());
    EXPECT_TRUE(QFileInfo(path(u"link.txt"_s)).isSymLink());
    EXPECT_EQ(files(), (QStringList{u"link.txt"_s, u"x.txt"_s, u"x.xls"_s, u"x.xlsx"_s}));
}

/// What has a name when the process is killed would stay.
TEST_F(SavingTest, MakesNoNameButItsOwn)
{
    const int watch = inotify_init1(IN_NONBLOCK);
    inotify_add_watch(watch, m_folder.path().toUtf8().constData(), IN_CREATE);
    const auto namesMade = [&] {
        QStringList names;
        alignas(inotify_event) char events[4096];
        const ssize_t size = read(watch, events, sizeof events);
        for (ssize_t at = 0; at < size;) {
            const auto *event = reinterpret_cast<const inotify_event *>(events + at);
            names << QString::fromUtf8(event->name).left(19); // what comes behind is chance
            at += ssize_t(sizeof *event + event->len);
        }
        return names;
    };
    for (const char *name : {"x.xls", "x.xlsx", "x.txt"}) {
        book.saveAs(path(QLatin1String(name)));
        EXPECT_EQ(namesMade(), QStringList(QLatin1String(name)));
        dialogs.expectYes(replaceQuestion);
        book.saveAs(path(QLatin1String(name)));
        EXPECT_EQ(namesMade(), QStringList(u".quvana-unfinished-"_s));
    }
    close(watch);
}

TEST_F(SavingTest, RemovesWhatAKilledOneHasLeft)
{
    writeFile(path(u".quvana-unfinished-left"_s), "of a killed one");
    writeFile(path(u".quvana-backup"_s), "the user's own");
    writeFile(path(u".quvana-unfinished-live"_s), "of another program");
    const int live = open(path(u".quvana-unfinished-live"_s).toUtf8().constData(), O_RDWR);
    flock(live, LOCK_EX);
    book.saveAs(path(u"x.txt"_s));
    EXPECT_EQ(files(), (QStringList{u".quvana-backup"_s, u".quvana-unfinished-live"_s, u"x.txt"_s}));
    close(live);
}

TEST_F(SavingTest, RefusesWhatCannotBeSaved)
{
    QDir(m_folder.path()).mkpath(u"folder/x.xls"_s);
    const QString unknown = u"5: The name of a workbook ends in .xls, .xlsx or .txt."_s;
    const QString notWritten = u"75: The file \"x.xls\" could not be written: "_s;
    const std::pair<QString, QString> cases[]{
        {path(u"x.ods"_s), unknown},
        {path(u"x"_s), unknown},
        {path(u"folder/x.xls"_s), notWritten + u"Is a directory"_s},
        {path(u"none/x.xls"_s), notWritten + u"No such file or directory"_s},
        {u"/sys/x.xls"_s, notWritten + u"Permission denied"_s},
    };
    for (const auto &[target, wanted] : cases)
        EXPECT_EQ(failureAt(target), wanted);
    book.setCell(1001, 1, QString(32768, u'x'));
    for (const char *name : {"x.xls", "x.xlsx"})
        EXPECT_EQ(
            failureAt(path(QLatin1String(name))),
            u"5: A text of 32768 characters does not fit into a cell, which holds 32767. Save as .txt."_s);
    book.setCell(1001, 1, {});
    book.setCell(1, 257, 1);
    EXPECT_EQ(failureAt(path(u"x.xls"_s)), u"5: A sheet of a .xls file has 256 columns. Save as .xlsx."_s);
    EXPECT_EQ(failureAt(path(u"x.xlsx"_s)), QString());
    Workbook high;
    high.setCell(65537, 1, 1);
    EXPECT_EQ(failureOf([&] { high.saveAs(path(u"x.xls"_s)); }), 5);
    EXPECT_EQ(files(), (QStringList{u"folder"_s, u"x.xlsx"_s}));
}

/// Whatever room there is: the save fails and the old file stays, or the new one is whole.
TEST_F(SavingTest, ADiskThatFillsUpLeavesTheOldFile)
{
    signal(SIGXFSZ, SIG_IGN);
    for (const char *name : {"x.xls", "x.xlsx", "x.txt"}) {
        const QString target = path(QLatin1String(name));
        const auto content = [&] {
            return target.endsWith(u"txt") ? QString::fromUtf8(bytesOf(target)) : toldByPython(target);
        };
        book.saveAs(target);
        const QString whole = content();
        writeFile(target, "old");
        rlim_t tooLittle = 0;
        rlim_t enough = 4'000'000;
        while (enough - tooLittle > 1) {
            const rlim_t room = (tooLittle + enough) / 2;
            dialogs.expectYes(replaceQuestion);
            const rlim_t before = limitFileSize(room);
            const QString failure = failureAt(target);
            limitFileSize(before);
            (failure.isEmpty() ? enough : tooLittle) = room;
            if (failure.isEmpty()) {
                EXPECT_TRUE(content() == whole) << name << " in " << room;
                writeFile(target, "old");
            } else {
                EXPECT_TRUE(failure.startsWith(
                    u"75: The file \"%1\" could not be written: "_s.arg(QLatin1String(name))))
                    << failure.toStdString();
                EXPECT_EQ(bytesOf(target), "old");
            }
        }
    }
    signal(SIGXFSZ, SIG_DFL);
    EXPECT_EQ(files().size(), 3);
}

} // namespace
