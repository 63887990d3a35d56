#include "stress/operations.h"

#include "browser/archiving.h"
#include "browser/corrections.h"
#include "core/engine.h"
#include "core/program_place.h"
#include "entry/posting.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/format.h"
#include "platform/runtime/runtime_error.h"
#include "platform/ui/dialogs.h"
#include "statements/export_rows.h"
#include "store/compaction.h"
#include "store/connection_strings.h"
#include "store/create_store.h"
#include "store/data_helpers.h"
#include "store/logical_tables.h"
#include "stress/fault_disk.h"
#include "stress/plain_text.h"
#include "stress/states.h"
#include "tutorial/tutorial_mode.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <algorithm>
#include <stdexcept>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace
{

/// Agrees to everything, but not to the offer of the generator behind the start of a tutorial.
class Agreeing : public DialogService
{
public:
    MessageAnswer message(const MessageRequest &request) override
    {
        told += request.text;
        if (request.buttons == MessageButtons::Ok)
            return MessageAnswer::Ok;
        return request.text.startsWith(u"You can now generate"_s) ? MessageAnswer::No : MessageAnswer::Yes;
    }
    QString input(const QString &, const QString &, const QString &) override { return {}; }
    std::optional<FontChoice> font(const FontChoice &) override { return {}; }
    std::optional<QString> saveFile(const SaveFileRequest &request) override
    {
        return engine.appPath + u'/' + request.fileName;
    }
    bool print(QPrinter &) override { return false; }

    QStringList told;
};

Agreeing agreeing;

void execute(const QString &statement)
{
    engine.dbConnection->execute(statement);
}

RecordsetPtr opened(const QString &sql)
{
    auto rows = Recordset::create();
    rows->setCursorLocation(CursorLocation::Client);
    rows->open(sql, engine.dbConnection, CursorType::Static, LockType::Optimistic);
    return rows;
}

const QStringList heirs{u"mother"_s, u"eldest"_s, u"second"_s, u"girl"_s};

Entry entryOf(bool isRevenue, int day)
{
    return {.isRevenue = isRevenue,
            .total = {},
            .date = makeDate(2004, 1, 1).addDays(day),
            .note = u"planted note"_s,
            .paymentDetail = u"planted payment"_s,
            .paymentMethod = u"Cash"_s,
            .kind = u"Property Rentals"_s};
}

bool post(bool isRevenue, int day)
{
    takeTold();
    withPostingFailurePath([&] {
        if (isRevenue)
            postRevenue(entryOf(true, day), u"800"_s, heirs, [](const QString &heir) {
                return toMoney(heir == heirs.front() ? 100 : heir == heirs.back() ? 140 : 280);
            });
        else
            postExpense(entryOf(false, day), u"100"_s, heirs);
    });
    return takeTold().contains(u"Successful Entry تم إدخال المبلغ بنجاح"_s);
}

/// A row of `general` as the grid shows it, with another note.
bool correct(int number, const QString &note)
{
    const RecordsetPtr rows = opened(getstrsql(u"general"_s, u"general"_s));
    EditedRow row{u"general"_s, u"general"_s, rows, {}};
    while (!rows->eof() && rows->value(u"transactionid"_s).toInt() != number)
        rows->moveNext();
    for (int field = 0; field < rows->fieldCount(); ++field) {
        const Value value = rows->value(field);
        QString text = value.toText();
        if (value.kind() == Value::Kind::Money)
            text = format(value, u"#,###,##0.00"_s);
        else if (value.kind() == Value::Kind::Date)
            text = FormatStamp(value.toDate());
        if (rows->field(field).name == u"transactiondetail"_s)
            text = note;
        row.cells.push_back({rows->field(field).name, text});
    }
    rows->moveFirst();
    QString action;
    return SaveRowChanges(row, action);
}

bool cancel(int number)
{
    QString action;
    cancelTransaction(u"general"_s, u"general"_s, number, action);
    return true;
}

bool archive(const QString &from, const QString &to)
{
    return archiveRange(u"audit_general"_s, from, to, [](const QString &, const QString &) {});
}

bool merge()
{
    const RecordsetPtr rows = opened(u"select * from audit_general1"_s);
    return mergeArchive(u"audit_general"_s, u"audit_general1"_s, *rows, [] {});
}

bool compact()
{
    engine.dbConnection->close();
    return CompactStore(engine.activeStorePath, engine.compactTempPath, engine.storePassword);
}

bool create()
{
    engine.dbConnection->close();
    return CreateStore(u"quvana"_s, engine.storePassword);
}

bool startPractice()
{
    takeTold();
    startTutorial([] {});
    return engine.tutorialMode;
}

bool exportLedger(const QString &name)
{
    takeTold();
    exportRows(*opened(u"select * from ledger order by id"_s), name, ExportFailure::Told);
    return takeTold().contains(u"Export complete..   تم التصدير بنجاح"_s);
}

QString inFolder(const QString &folder, QStringView name)
{
    return folder + u'/' + name.toString();
}

} // namespace

const std::vector<Operation> &operations()
{
    static const std::vector<Operation> all{
        {"posting", [] { return post(true, 200); }},
        {"correcting", [] { return correct(3, u"planted correction"_s); }, true},
        {"cancelling", [] { return cancel(5); }, true},
        {"archiving", [] { return archive(u"2004/01/20"_s, u"2004/01/28"_s); }},
        {"merging", merge},
        {"compacting", compact},
        {"creating", create},
        {"tutorial start", startPractice},
        {"export", [] { return exportLedger(u"statement.xls"_s); }},
        {"export .xlsx", [] { return exportLedger(u"statement.xlsx"_s); }},
        {"first export", [] { return exportLedger(u"statement.txt"_s); }},
    };
    return all;
}

QStringList takeTold()
{
    return std::exchange(agreeing.told, {});
}

void installDialogs()
{
    installDialogService(&agreeing);
}

void attachSession(const QString &folder)
{
    engine = {};
    setProgramPlace(folder, u"quvana"_s, folder + u"/quvana.ini"_s);
    locateProgram();
    deriveSessionPaths();
    engine.languageSuffix = u"en"_s;
    setClock([] { return makeDate(2004, 3, 15, 10, 20, 30); });
    engine.dbConnection = Connection::create();
    if (QFile::exists(engine.storeFilePath))
        engine.dbConnection->open(engine.connectionString);
}

void detachSession()
{
    const QString password = engine.storePassword; // for a look at the store
    engine = {};
    engine.storePassword = password;
}

void makeTemplate(const QString &folder)
{
    attachSession(folder);
    if (!CreateStore(u"quvana"_s, engine.storePassword))
        throw std::runtime_error("no store");
    QFile::copy(engine.storeFilePath, folder + u"/quvana_backup.mdb"_s);
    engine.dbConnection->open(engine.connectionString);
    for (qsizetype i = 0; i < heirs.size(); ++i)
        execute(u"insert into members (name,sex,title,relation,dob,[group],valid) values "
                "('%1',%2,'planted',%3,'01/01/1980',1,true)"_s.arg(heirs[i],
                                                                   i == 0 || i == 3 ? u"2"_s : u"1"_s,
                                                                   i == 0   ? u"1"_s
                                                                   : i == 3 ? u"3"_s
                                                                            : u"2"_s));
    execute(u"insert into users (userid,[password],rank) values ('planted','planted secret',3)"_s);
    for (int number = 1; number <= 20; ++number) {
        if (!post(number % 3 != 0, number))
            throw std::runtime_error("no posting");
        correct(number, u"note %1"_s.arg(number));
    }
    if (!archive(u"2004/01/01"_s, u"2004/01/10"_s))
        throw std::runtime_error("no archive");
    execute(u"select * into [ledger1] from [ledger] where transactionid<6"_s);
    execute(u"delete from [ledger] where transactionid<6"_s);
    plantTexts();
    engine.dbConnection->close();
    for (const char *name : {"statement.xls", "statement.xlsx"}) {
        QFile workbook(inFolder(folder, QString::fromLatin1(name)));
        if (!workbook.open(QFile::WriteOnly) || workbook.write("an earlier statement") < 0)
            throw std::runtime_error("no workbook");
    }
    detachSession();
}

void layOut(const QString &templateFolder, const QString &folder)
{
    QDir(folder).removeRecursively();
    QDir().mkpath(folder);
    for (const QString &name : QDir(templateFolder).entryList(QDir::Files | QDir::Hidden))
        QFile::copy(inFolder(templateFolder, name), inFolder(folder, name));
}

FolderState stateOf(const QString &folder)
{
    const QString store = inFolder(folder, u"quvana.mdb");
    QByteArray workbooks;
    for (const char *name : {"statement.xls", "statement.xlsx", "statement.txt"})
        workbooks += bytesDigest(inFolder(folder, QString::fromLatin1(name))) + '|';
    return {rowsDigest(store), amountsDigest(store), rowsDigest(inFolder(folder, u"quvana_backup.mdb")),
            rowsDigest(inFolder(folder, u"testdb.mdb")), workbooks};
}

bool Course::holds(const FolderState &state) const
{
    return std::find(states.begin(), states.end(), state) != states.end();
}

Course courseOf(const Operation &operation, const QString &templateFolder)
{
    const QTemporaryDir folder;
    const QTemporaryDir moments;
    layOut(templateFolder, folder.path());
    int taken = 0;
    const auto take = [&] { layOut(folder.path(), moments.filePath(QString::number(taken++))); };
    attachSession(folder.path());
    take();
    fault_disk::disarm();
    fault_disk::onTransaction(take);
    QElapsedTimer timer;
    timer.start();
    const bool done = operation.run();
    Course course;
    course.microseconds = timer.nsecsElapsed() / 1000;
    course.diskOperations = fault_disk::operations();
    fault_disk::onTransaction({});
    if (!done)
        throw std::runtime_error(std::string(operation.name) + " fails by itself");
    detachSession();
    take();
    for (int moment = 0; moment < taken; ++moment) {
        const FolderState state = stateOf(moments.filePath(QString::number(moment)));
        if (!course.holds(state))
            course.states.push_back(state);
    }
    return course;
}

QString wrongAtNextStart(const Operation &operation, const Course &course, const QString &folder,
                         bool statementFailed)
{
    try {
        const FolderState state = stateOf(folder);
        const FolderState &before = course.states.front();
        if (std::string_view(operation.name) == "creating") {
            // Its steps between transactions are renames: the earlier store lies at one of two places.
            const FolderState &after = course.states.back();
            if (state.store != before.store && state.backup != before.store)
                return u"the earlier store is gone"_s;
            if (state.store != before.store && state.store != after.store && state.store != "none")
                return u"a half store"_s;
        } else if (statementFailed && operation.auditMayFail) {
            const auto sameAmounts = [&](const FolderState &one) { return one.amounts == state.amounts; };
            if (std::none_of(course.states.begin(), course.states.end(), sameAmounts))
                return u"an amount was changed"_s;
        } else if (!course.holds(state)) {
            return u"a state that no commit leaves"_s;
        }
        attachSession(folder);
        if (!engine.dbConnection->isOpen() && !CreateStore(u"quvana"_s, engine.storePassword))
            return u"no store can be made: "_s + takeTold().join(u' ');
        if (!engine.dbConnection->isOpen())
            engine.dbConnection->open(engine.connectionString);
        const auto count = [] { return opened(u"select count(*) from [general]"_s)->value(0).toInt(); };
        const int rows = count();
        if (!post(false, 300) || count() != rows + 1)
            return u"the next posting fails"_s;
        detachSession();
        return {};
    } catch (const RuntimeError &error) {
        return error.numberText() + u' ' + error.description();
    }
}
