#include "platform/ui/application.h"
#include "stress/fault_disk.h"
#include "stress/operations.h"
#include "stress/trials.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>

#include <csignal>

using namespace Qt::Literals::StringLiterals;

/// Plays faults against the program's own routines and soaks its screens:
/// `quvana-stress kills|disk|power|bytes|two|soak [--long]`.
int main(int argc, char **argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // Whatever the program writes beside its store stands in here.
    const QTemporaryDir scratch;
    for (const char *place : {"TMPDIR", "HOME"}) {
        const QString path = scratch.filePath(QLatin1StringView(place));
        QDir().mkpath(path);
        qputenv(place, QFile::encodeName(path));
    }
    signal(SIGXFSZ, SIG_IGN);
    fault_disk::install();
    Application application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption({u"long"_s, u"The long run."_s});
    parser.addOption({u"seed"_s, u"Of what is left to chance."_s, u"NUMBER"_s, u"1"_s});
    parser.addOption({u"operations"_s, u"So many in the soak."_s, u"NUMBER"_s});
    parser.addOption({u"only"_s,
                      u"This one alone in the soak or among the kills, such as \"post revenue\"."_s,
                      u"OPERATION"_s});
    parser.addPositionalArgument(u"trial"_s,
                                 u"kills, disk, power, bytes, two or soak; all when none is named."_s);
    parser.process(application);
    const bool isLong = parser.isSet(u"long"_s);
    const auto seed = parser.value(u"seed"_s).toUInt();
    const QStringList wanted = parser.positionalArguments();

    installDialogs();
    const QTemporaryDir folder;
    makeTemplate(folder.path());
    int bad = 0;
    const auto play = [&](const QString &name, auto &&trial) {
        if (wanted.isEmpty() || wanted.contains(name))
            bad += trial().bad;
    };
    play(u"kills"_s,
         [&] { return killOperations(folder.path(), isLong ? 500 : 3, seed, parser.value(u"only"_s)); });
    play(u"disk"_s, [&] { return failDisk(folder.path(), isLong ? 1 : 97); });
    play(u"disk"_s, [&] { return limitExport(folder.path(), isLong ? 64 : 4096); });
    play(u"power"_s, [&] { return losePower(folder.path(), isLong ? 700 : 5, seed); });
    play(u"bytes"_s, [&] { return damageBytes(isLong ? 1 : 2039); });
    play(u"two"_s, [&] { return postInTwo(folder.path(), isLong ? 1000 : 10); });
    const int operations = parser.isSet(u"operations"_s) ? parser.value(u"operations"_s).toInt()
                           : isLong                      ? 50'000
                                                         : 100;
    play(u"soak"_s, [&] { return soakScreens(folder.path(), operations, seed, parser.value(u"only"_s)); });
    std::printf("%s\n", bad == 0 ? "nothing bad" : "FOUND SOMETHING BAD");
    return bad == 0 ? 0 : 1;
}
