#include "platform/runtime/runtime_error.h"
#include "stress/fault_disk.h"
#include "stress/operations.h"
#include "stress/plain_text.h"
#include "stress/states.h"
#include "stress/trials.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <sys/wait.h>

#include <csignal>
#include <random>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace
{

/// Looks at what a kill has left in the operation's folder and where programs put temporary files: no text of
/// the store is readable in any but the workbooks, and nothing unfinished is there.
void lookAtFiles(const PlainTexts &texts, const QString &folder, const Course &course, Findings &findings)
{
    const auto isWorkbook = [](const QString &path) { return path.contains(u"/statement."_s); };
    QStringList hidden;
    for (const QString &name :
         QDir(folder).entryList({u".*"_s}, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)) {
        // A whole export may wait for the rename that replaces the earlier one: no system call does both.
        hidden << folder + u'/' + name;
        const QByteArray digest = bytesDigest(hidden.last());
        if (digest != "none" && course.states.back().workbooks.contains(digest))
            findings.note(u"whole, not yet renamed"_s);
        else
            findings.finding(u"left: "_s + name);
    }
    const auto exempt = [&](const QString &one) { return isWorkbook(one) || hidden.contains(one); };
    // The folder is there too.
    for (const QString &path : texts.filesWithOne({QDir::tempPath(), QDir::homePath()}, exempt))
        findings.finding(u"readable text in "_s + path);
}

/// When a process is killed: right before the disk operation of a number, or some time after its beginning.
struct Moment {
    int diskOperation = 0; ///< from 1; 0 for none
    unsigned microseconds = 0;
};

/// Kills the operation at a moment; True when that ended it.
bool killAt(const Operation &operation, const QString &folder, Moment moment)
{
    int ends[2] = {};
    if (pipe(ends) != 0)
        return false;
    const pid_t child = fork();
    if (child == 0) {
        try {
            attachSession(folder);
            if (moment.diskOperation > 0)
                fault_disk::arm(fault_disk::Fault::Kill, moment.diskOperation, true);
            if (write(ends[1], "!", 1) == 1)
                operation.run();
        } catch (const RuntimeError &) {
            _exit(1);
        }
        if (moment.diskOperation > 0)
            raise(SIGKILL); // there were fewer than expected
        pause();
    }
    close(ends[1]);
    char begun = 0;
    const bool ready = read(ends[0], &begun, 1) == 1;
    close(ends[0]);
    if (moment.diskOperation == 0) {
        usleep(moment.microseconds);
        kill(child, SIGKILL);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return ready && WIFSIGNALED(status);
}

} // namespace

Findings killOperations(const QString &templateFolder, int times, std::uint32_t seed, const QString &only)
{
    const PlainTexts texts = PlainTexts::ofStore(templateFolder + u"/quvana.mdb"_s);
    std::mt19937 chance(seed);
    Findings all;
    const QTemporaryDir place;
    const QString folder = place.filePath(u"killed"_s);
    for (const Operation &operation : operations()) {
        if (!QLatin1StringView(operation.name).contains(only))
            continue;
        const Course course = courseOf(operation, templateFolder);
        Findings findings;
        for (int time = 0; time < times; ++time, ++findings.replays) {
            layOut(templateFolder, folder);
            // Half of them by the clock, which also meets what is done between the disk operations.
            Moment moment{.microseconds = unsigned(chance() % (course.microseconds * 6 / 5 + 1))};
            if (time % 2 == 1 && course.diskOperations > 0)
                moment.diskOperation = 1 + int(chance() % unsigned(course.diskOperations));
            if (!killAt(operation, folder, moment)) {
                findings.finding(u"%1 ended by itself"_s.arg(QLatin1StringView(operation.name)));
                continue;
            }
            if (QFile::exists(folder + u"/quvana.mdb-journal"_s))
                findings.note(u"undone at the next start"_s);
            lookAtFiles(texts, folder, course, findings);
            const QString wrong = wrongAtNextStart(operation, course, folder);
            if (!wrong.isEmpty())
                findings.finding(u"%1: %2"_s.arg(QLatin1StringView(operation.name), wrong));
        }
        findings.print(operation.name);
        all.replays += findings.replays;
        all.bad += findings.bad;
    }
    return all;
}
