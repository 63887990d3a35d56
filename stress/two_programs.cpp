#include "core/engine.h"
#include "entry/posting.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/runtime_error.h"
#include "stress/child.h"
#include "stress/operations.h"
#include "stress/trials.h"

#include <QtCore/QTemporaryDir>

using namespace Qt::Literals::StringLiterals;

namespace
{

/// Posts so many expenses, each tried until it is in; the exit code of a program.
int postAll(const QString &folder, int times)
{
    attachSession(folder);
    int waits = 0;
    for (int done = 0; done < times && waits < times * 100;) {
        takeTold();
        try {
            postExpense({.isRevenue = false,
                         .total = {},
                         .date = makeDate(2004, 2, 1),
                         .note = u"beside"_s,
                         .paymentDetail = {},
                         .paymentMethod = u"Cash"_s,
                         .kind = u"Other"_s},
                        u"100"_s, {u"mother"_s, u"girl"_s});
        } catch (const RuntimeError &) { // the transaction could not begin: told, and tried again
        }
        if (takeTold().contains(u"Successful Entry تم إدخال المبلغ بنجاح"_s))
            ++done;
        else
            ++waits;
    }
    detachSession();
    return waits < times * 100 ? 0 : 1;
}

} // namespace

Findings postInTwo(const QString &templateFolder, int times)
{
    const QTemporaryDir place;
    const QString folder = place.filePath(u"two"_s);
    layOut(templateFolder, folder);
    Findings findings;
    findings.replays = 2 * times;
    const auto count = [&](const QString &sql) {
        const auto rows = Recordset::create();
        rows->open(sql, engine.dbConnection, CursorType::Static);
        return rows->value(0).toInt();
    };
    attachSession(folder);
    const int before = count(u"select count(*) from [general]"_s);
    detachSession();
    const int outcome = inChild([&] {
        const pid_t other = fork();
        if (other == 0)
            _exit(postAll(folder, times));
        const int own = postAll(folder, times);
        int status = 0;
        waitpid(other, &status, 0);
        return own + (WIFEXITED(status) ? WEXITSTATUS(status) : 1);
    });
    if (outcome != 0)
        findings.finding(u"a program did not come to its end: %1"_s.arg(outcome));
    attachSession(folder);
    const int after = count(u"select count(*) from [general]"_s);
    if (after != before + 2 * times)
        findings.finding(u"%1 transactions in place of %2"_s.arg(after - before).arg(2 * times));
    if (count(u"select max(transactionid) from [general]"_s) != after)
        findings.finding(u"a number was given twice or left out"_s);
    if (count(u"select sn from settings"_s) != after)
        findings.finding(u"the last number is wrong"_s);
    if (count(u"select count(*) from ledger where transactiondetail='beside'"_s) != 4 * times)
        findings.finding(u"ledger rows are missing"_s);
    detachSession();
    findings.print("two programs");
    return findings;
}
