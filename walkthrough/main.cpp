// Plays the program's main job with real key presses and clicks, saves a picture of each screen on the way,
// and prints the ledger rows that it finds in the stores at the end. Exit code 1 when the story stopped or a
// row is not what it must be.

#include "shell/main.h"

#include "browsing.h"
#include "checking.h"
#include "core/engine.h"
#include "core/program_place.h"
#include "correcting.h"
#include "managing_users.h"
#include "platform/runtime/runtime_error.h"
#include "platform/ui/application.h"
#include "platform/ui/process.h"
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

/// Plays the starts of a story to the entry of its first amounts.
void playBeginning(const Story &story, const QString &place, Player &player)
{
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
}

/// Plays to the end what stands before the player; false when the story stopped.
bool playOut(const Story &story, Player &player, const std::function<void()> &lastly, QTextStream &out)
{
    playEnd(player, lastly);
    player.play();
    runProgram();
    if (player.finished() && player.failure().isEmpty())
        return true;
    out << story.name
        << " stopped: " << (player.failure().isEmpty() ? u"the program ended early"_s : player.failure())
        << Qt::endl;
    return false;
}

bool playWhole(const Story &story, const QString &folder, const std::function<void()> &lastly,
               QTextStream &out)
{
    Player player(folder);
    const QString place = folder + u"/stores/"_s + story.name;
    playBeginning(story, place, player);
    playBrowsers(player, story);
    playCorrections(player, story);
    playExpense(player, story, story.expenseAnew);
    playUsers(player, story);
    playPractice(player, story);
    playConversion(player);
    playStatements(player, story, place);
    return playOut(story, player, lastly, out) && checkLedger(place + u"/quvana.mdb"_s, story, out);
}

/// Checks every screen on the store of a story's beginning and prints the faults; true when there is none.
bool checkScreens(const Story &story, const QString &folder, QTextStream &out)
{
    Player player(folder);
    playBeginning(story, folder + u"/stores/"_s + story.name, player);
    QStringList faults;
    if (!playOut(
            story, player, [&] { faults = checkEveryScreen(folder + u"/faults"_s); }, out))
        return false;
    for (const QString &fault : faults)
        out << fault << Qt::endl;
    out << faults.size() << " faults" << Qt::endl;
    return faults.isEmpty();
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
    parser.addOption({u"check"_s, u"Checks the looks and the keyboard of every screen instead."_s});
    parser.process(application);
    const QString folder = QDir(parser.value(u"pictures"_s)).absolutePath();

    QTextStream out(stdout);
    try {
        const std::vector<Story> all = stories();
        if (parser.isSet(u"check"_s))
            return checkScreens(all.front(), folder, out) ? 0 : 1;
        const auto tour = [&folder] { takeTour(folder + u"/tour"_s); };
        for (const Story &story : all) {
            const bool last = &story == &all.back();
            if (!playWhole(story, folder, last ? tour : std::function<void()>(), out))
                return 1;
        }
    } catch (const RuntimeError &error) {
        out << "failed: " << error.numberText() << ' ' << error.description() << Qt::endl;
        return 1;
    }
    out << "The pictures are in " << folder << Qt::endl;
    return 0;
}
