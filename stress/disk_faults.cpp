#include "platform/runtime/runtime_error.h"
#include "stress/child.h"
#include "stress/fault_disk.h"
#include "stress/operations.h"
#include "stress/trials.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <sys/resource.h>

#include <algorithm>
#include <random>

using namespace Qt::Literals::StringLiterals;
using fault_disk::Fault;

namespace
{

enum Outcome { Done = 0, Told = 1, Ended = 2, NoFault = 3 };

/// Runs the operation on a disk that fails.
int runOnBadDisk(const Operation &operation, const QString &folder, Fault fault, int at, bool forEver,
                 std::uint32_t seed = 0)
{
    return inChild([&] {
        try {
            if (fault == Fault::PowerLoss)
                fault_disk::keepUnsynced(QFile::encodeName(folder).constData());
            attachSession(folder);
            fault_disk::arm(fault, at, forEver, seed);
            const bool done = operation.run();
            if (!fault_disk::wasMet())
                return int(NoFault);
            return int(done ? Done : Told);
        } catch (const RuntimeError &) { // the program would tell it and end
            return int(Ended);
        }
    });
}

QString placeOf(const Operation &operation, const char *fault, int at)
{
    return u"%1, %2 at %3: "_s.arg(QLatin1StringView(operation.name), QLatin1StringView(fault)).arg(at);
}

} // namespace

Findings failDisk(const QString &templateFolder, int stride)
{
    struct Kind {
        const char *name;
        Fault fault;
        bool forEver;
    };
    constexpr Kind kinds[] = {{"broken once", Fault::IoError, false},
                              {"broken for ever", Fault::IoError, true},
                              {"full once", Fault::DiskFull, false},
                              {"full for ever", Fault::DiskFull, true}};
    Findings all;
    const QTemporaryDir place;
    const QString folder = place.filePath(u"bad disk"_s);
    for (const Operation &operation : operations()) {
        const Course course = courseOf(operation, templateFolder);
        Findings findings;
        for (const Kind &kind : kinds) {
            for (int at = 1; at <= course.diskOperations; at += stride, ++findings.replays) {
                layOut(templateFolder, folder);
                const int outcome = runOnBadDisk(operation, folder, kind.fault, at, kind.forEver);
                const QString where = placeOf(operation, kind.name, at);
                if (outcome < Done || outcome > NoFault)
                    findings.finding(where + u"ended by %1"_s.arg(outcome));
                else
                    findings.note(QStringList{u"done"_s, u"told"_s, u"ended"_s, u"not met"_s}[outcome]);
                const QString wrong = wrongAtNextStart(operation, course, folder, true);
                if (!wrong.isEmpty())
                    findings.finding(where + wrong);
            }
        }
        findings.print(operation.name);
        all.replays += findings.replays;
        all.bad += findings.bad;
    }
    return all;
}

Findings limitExport(const QString &templateFolder, int stride)
{
    const auto exporting = std::find_if(operations().begin(), operations().end(), [](const Operation &one) {
        return std::string_view(one.name) == "export";
    });
    const Course course = courseOf(*exporting, templateFolder);
    const QTemporaryDir place;
    const QString folder = place.filePath(u"small disk"_s);
    Findings findings;
    int outcome = Told;
    for (rlim_t room = 0; outcome == Told; room += rlim_t(stride), ++findings.replays) {
        layOut(templateFolder, folder);
        outcome = inChild([&] {
            attachSession(folder);
            rlimit limit{};
            getrlimit(RLIMIT_FSIZE, &limit);
            limit.rlim_cur = room;
            setrlimit(RLIMIT_FSIZE, &limit);
            return int(exporting->run() ? Done : Told);
        });
        const QString where = placeOf(*exporting, "no more room", int(room));
        const QString wrong = wrongAtNextStart(*exporting, course, folder);
        if (!wrong.isEmpty())
            findings.finding(where + wrong);
        if ((stateOf(folder).workbooks == course.states.front().workbooks) != (outcome == Told))
            findings.finding(where + u"the workbook is not what was told"_s);
        if (!QDir(folder).entryList({u".quvana*"_s}, QDir::Hidden | QDir::Files | QDir::Dirs).isEmpty())
            findings.finding(where + u"an unfinished file was left"_s);
    }
    if (outcome != Done)
        findings.finding(u"the export ended by %1"_s.arg(outcome));
    findings.print("export, no room");
    return findings;
}

Findings losePower(const QString &templateFolder, int times, std::uint32_t seed)
{
    std::mt19937 chance(seed);
    Findings all;
    const QTemporaryDir place;
    const QString folder = place.filePath(u"power"_s);
    for (const Operation &operation : operations()) {
        const std::string_view name = operation.name;
        if (name != "posting" && name != "archiving" && name != "compacting")
            continue;
        const Course course = courseOf(operation, templateFolder);
        Findings findings;
        for (int time = 0; time < times; ++time, ++findings.replays) {
            layOut(templateFolder, folder);
            const int at = 1 + int(chance() % unsigned(course.diskOperations));
            const int outcome =
                runOnBadDisk(operation, folder, Fault::PowerLoss, at, true, std::uint32_t(chance()));
            const QString where = placeOf(operation, "power lost", at);
            if (outcome != fault_disk::powerLossExit)
                findings.finding(where + u"ended by %1"_s.arg(outcome));
            if (QFile::exists(folder + u"/quvana.mdb-journal"_s))
                findings.note(u"undone at the next start"_s);
            const QString wrong = wrongAtNextStart(operation, course, folder);
            if (!wrong.isEmpty())
                findings.finding(where + wrong);
        }
        findings.print(operation.name);
        all.replays += findings.replays;
        all.bad += findings.bad;
    }
    return all;
}
