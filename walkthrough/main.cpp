// Plays the program's main job with real key presses and clicks, saves a picture of each screen on the way,
// and prints the ledger rows that it finds in the stores at the end. Exit code 1 when the story stopped or a
// row is not what it must be.

#include "shell/main.h"

#include "browsing.h"
#include "core/engine.h"
#include "core/program_place.h"
#include "correcting.h"
#include "managing_users.h"
#include "platform/runtime/runtime_error.h"
#include "platform/ui/application.h"
#include "platform/ui/screen.h"
#include "player.h"
#include "practising.h"
#include "reporting.h"
#include "store/connection_strings.h"
#include "story.h"
#include "tour.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QDir>
#include <QtCore/QTextStream>

#include <algorithm>
#include <iterator>

using namespace Qt::Literals::StringLiterals;

namespace
{

/// Drops what the platform without a display says of windows that it can't raise; everything else goes to the
/// error output.
void reportMessage(QtMsgType, const QMessageLogContext &, const QString &message)
{
    if (!message.startsWith(u"This plugin does not support"))
        QTextStream(stderr) << message << Qt::endl;
}

/// Starts the program once and returns when it has ended.
void runProgram()
{
    engine = {};
    resetProcess();
    runProcess(Main);
}

/// Reads the store anew and prints its ledger; true when it is what the story must leave.
bool checkLedger(const QString &path, const Story &story, QTextStream &out)
{
    const ConnectionPtr connection = Connection::create();
    connection->open(connectionStringOf(path, u"romanqvlt"_s));
    const RecordsetPtr rows = Recordset::create();
    rows->open(u"select name,amount,totalamount,transactionid from ledger order by transactionid,name"_s,
               connection, CursorType::Static);
    out << story.name << Qt::endl;
    std::vector<LedgerRow> expected = story.ledger;
    std::ranges::copy(story.ledgerAnew, std::back_inserter(expected));
    bool good = rows->recordCount() == static_cast<int>(expected.size());
    for (int row = 0; !rows->eof(); rows->moveNext(), ++row) {
        const qint32 transaction = rows->value(u"transactionid"_s).toInt();
        const QString name = rows->value(u"name"_s).toText();
        const QString amount = rows->value(u"amount"_s).toText();
        out << "  transaction " << transaction << "  " << amount << " of "
            << rows->value(u"totalamount"_s).toText() << "  " << name << Qt::endl;
        good = good && expected[static_cast<std::size_t>(row)] == LedgerRow{transaction, name, amount};
    }
    if (!good)
        out << "  these are not the rows that the story must leave" << Qt::endl;
    rows->close();
    connection->close();
    return good;
}

bool play(const Story &story, const QString &folder, Player &player, const std::function<void()> &lastly,
          QTextStream &out)
{
    const QString place = folder + u"/stores/"_s + story.name;
    QDir(place).removeRecursively();
    QDir().mkpath(place);
    setProgramPlace(place, u"quvana"_s, place + u"/quvana.ini"_s);

    playFirstStart(player);
    player.play();
    runProgram();
    playFirstUser(player, story);
    player.play();
    runProgram();
    playLogin(player, story);
    playFamily(player, story);
    playRevenue(player, story);
    playExpense(player, story, story.expense);
    playBrowsers(player, story);
    playCorrections(player, story);
    playExpense(player, story, story.expenseAnew);
    playUsers(player, story);
    playPractice(player, story);
    playConversion(player);
    playStatements(player, story, place);
    playEnd(player, lastly);
    player.play();
    runProgram();

    if (!player.finished() || !player.failure().isEmpty()) {
        out << story.name
            << " stopped: " << (player.failure().isEmpty() ? u"the program ended early"_s : player.failure())
            << Qt::endl;
        return false;
    }
    return checkLedger(place + u"/quvana.mdb"_s, story, out);
}

} // namespace

int main(int argc, char **argv)
{
    qInstallMessageHandler(reportMessage);
    Application application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(u"Plays the program's main job and leaves pictures and stores."_s);
    parser.addHelpOption();
    parser.addOption(
        {u"pictures"_s, u"Folder for the pictures and the stores."_s, u"folder"_s, u"build/walk-through"_s});
    parser.process(application);
    const QString folder = QDir(parser.value(u"pictures"_s)).absolutePath();

    QTextStream out(stdout);
    try {
        const std::vector<Story> all = stories();
        for (const Story &story : all) {
            Player player(folder);
            const bool last = &story == &all.back();
            if (!play(story, folder, player,
                      last ? [&folder] { takeTour(folder + u"/tour"_s); } : std::function<void()>(), out))
                return 1;
        }
    } catch (const RuntimeError &error) {
        out << "failed: " << error.numberText() << ' ' << error.description() << Qt::endl;
        return 1;
    }
    out << "The pictures are in " << folder << Qt::endl;
    return 0;
}
