#include "platform/runtime/runtime_error.h"
#include "stress/operations.h"
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

/// What stands in a store in many columns, and may stand readable in no file but the workbook.
bool anyFileTells(const QString &folder)
{
    for (const QString &name : QDir(folder).entryList(QDir::Files | QDir::Hidden)) {
        QFile file(folder + u'/' + name);
        if (name == u"statement.xls" || !file.open(QFile::ReadOnly))
            continue;
        const QByteArray content = file.readAll();
        if (content.contains("planted") || content.contains(QByteArray("p\0l\0a\0n\0t\0e\0d", 13)))
            return true;
    }
    return false;
}

/// Kills the operation some microseconds after its beginning; True when that ended it.
bool killAt(const Operation &operation, const QString &folder, unsigned microseconds)
{
    int ends[2] = {};
    if (pipe(ends) != 0)
        return false;
    const pid_t child = fork();
    if (child == 0) {
        try {
            attachSession(folder);
            if (write(ends[1], "!", 1) == 1)
                operation.run();
        } catch (const RuntimeError &) {
            _exit(1);
        }
        pause();
    }
    close(ends[1]);
    char begun = 0;
    const bool ready = read(ends[0], &begun, 1) == 1;
    close(ends[0]);
    usleep(microseconds);
    kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    return ready && WIFSIGNALED(status);
}

} // namespace

Findings killOperations(const QString &templateFolder, int times, std::uint32_t seed)
{
    std::mt19937 chance(seed);
    Findings all;
    const QTemporaryDir place;
    const QString folder = place.filePath(u"killed"_s);
    for (const Operation &operation : operations()) {
        const Course course = courseOf(operation, templateFolder);
        Findings findings;
        for (int time = 0; time < times; ++time, ++findings.replays) {
            layOut(templateFolder, folder);
            if (!killAt(operation, folder, unsigned(chance() % (course.microseconds * 6 / 5 + 1)))) {
                findings.finding(u"%1 ended by itself"_s.arg(QLatin1StringView(operation.name)));
                continue;
            }
            if (QFile::exists(folder + u"/quvana.mdb-journal"_s))
                findings.note(u"undone at the next start"_s);
            if (anyFileTells(folder))
                findings.finding(
                    u"%1: readable text beside the store"_s.arg(QLatin1StringView(operation.name)));
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
