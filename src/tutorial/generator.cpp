#include "tutorial/generator.h"

#include "core/engine.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/numbers.h"
#include "platform/runtime/runtime_error.h"
#include "platform/ui/wait.h"

#include <chrono>
#include <cmath>
#include <random>

using namespace Qt::Literals::StringLiterals;

namespace
{

constexpr std::size_t writtenTogether = 50;

/// `first` and the `count` - 1 numbers behind it, all equally likely.
qint32 drawOneOf(const UniformSource &uniform, double count, qint32 first)
{
    return qint32(std::floor(count * uniform())) + first;
}

/// Runs statements and keeps what fails: a box would serve events in the middle of a transaction.
class Attempts
{
public:
    template <typename Statement>
    bool operator()(Statement &&statement)
    {
        try {
            statement();
            return true;
        } catch (const RuntimeError &failure) {
            failures.push_back(failure);
            return false;
        }
    }
    void set(Recordset &table, const QString &field, const Value &value)
    {
        (*this)([&] { table.setValue(field, value); });
    }

    std::vector<RuntimeError> failures;
};

RecordsetPtr openTable(const QString &name, const ConnectionPtr &store)
{
    RecordsetPtr table = Recordset::create();
    table->open(name, store, CursorType::Static, LockType::Optimistic, CommandKind::Table);
    return table;
}

} // namespace

UniformSource clockSeededSource()
{
    constexpr int bits = 53; // that a double holds
    std::mt19937_64 numbers(quint64(std::chrono::system_clock::now().time_since_epoch().count()));
    return [numbers]() mutable { return std::ldexp(double(numbers() >> (64 - bits)), -bits); };
}

GeneratorWords generatorWords(bool arabic)
{
    if (arabic)
        return {{},
                {},
                {u"شيك"_s, u"نقداً"_s, u"بطاقة إئتمانً"_s},
                {u"تلفون"_s, u"كهرباء"_s, u"دراسه"_s, u"تذاكر"_s, u"أقساط"_s, u"مواصلات"_s, u"معيشه"_s,
                 u"مصروف"_s, u"أرباح"_s, u"أخرى"_s}};
    return {u"Sale of building"_s,
            u"Agreed to wait on payment"_s,
            {u"Check"_s, u"Cash"_s, u"Credit Card"_s},
            {u"Phone"_s, u"Electricity"_s, u"Education"_s, u"Travel"_s, u"Fees"_s, u"Transportation"_s,
             u"Food"_s, u"Allowance"_s, u"Earnings"_s, u"Other"_s}};
}

Invention drawInvention(const UniformSource &uniform, qsizetype kinds, const GeneratorWords &words)
{
    Invention drawn;
    drawn.date = readDate(u"31-01-95"_s).addDays(drawOneOf(uniform, 5000, 1));
    drawn.amount = drawOneOf(uniform, 200000, 200);
    drawn.kind = drawOneOf(uniform, double(kinds - 1), 1);
    drawn.payment = words.paymentMethods[std::size_t(drawOneOf(uniform, 3, 0))];
    return drawn;
}

Generator::Generator(GeneratorFamily family, GeneratorWords words, Host host, UniformSource uniform)
    : m_family(std::move(family)), m_words(std::move(words)), m_host(std::move(host)),
      m_uniform(std::move(uniform))
{
}

void Generator::attempt(const std::function<void()> &statement)
{
    try {
        statement();
    } catch (const RuntimeError &failure) {
        m_host.failed(failure);
    }
}

void Generator::open(bool isRevenue)
{
    m_uniform(); // nothing reads this one: it is meant
    m_store = engine.dbConnection;
    attempt([&] {
        m_settings = Recordset::create();
        m_settings->open(u"select sn as maxid from settings"_s, m_store, CursorType::Static,
                         LockType::Optimistic);
        if (!m_settings->eof())
            m_nextTransactionId = m_settings->value(0).toInt();
    });
    attempt([&] { m_ledger = openTable(u"ledger"_s, m_store); });
    attempt([&] { m_general = openTable(u"[general]"_s, m_store); });
    attempt([&] {
        const auto details = Recordset::create();
        details->open(u"select id from details where credit="_s + Value(isRevenue).toText(), m_store,
                      CursorType::Static);
        if (details->eof())
            throw runtime_errors::outOfRange();
        for (m_words.detailTypes.clear(); !details->eof(); details->moveNext())
            m_words.detailTypes += details->value(0).toText();
        details->close();
    });
}

bool Generator::isOpen() const
{
    return m_settings && m_settings->isOpen() && m_ledger && m_ledger->isOpen() && m_general &&
           m_general->isOpen();
}

bool Generator::makeTransaction()
{
    const qint32 before = m_nextTransactionId;
    attempt([&] { m_nextTransactionId = toLongInteger(double(before) + 1); });
    serveEvents();
    if (!isOpen()) {
        m_nextTransactionId = before;
        return false;
    }
    Transaction transaction;
    transaction.id = m_nextTransactionId;
    transaction.invention = drawInvention(m_uniform, m_words.detailTypes.size(), m_words);
    transaction.expense = m_host.isExpense();
    m_host.show(m_nextTransactionId);
    if (!divide(transaction)) {
        m_nextTransactionId = before;
        return false;
    }
    m_unwritten.push_back(std::move(transaction));
    if (m_unwritten.size() == writtenTogether)
        save();
    return true;
}

/// What each row of `ledger` gets; False when the tables were closed meanwhile.
bool Generator::divide(Transaction &transaction)
{
    // Expenses are drawn with repetition and only from the first members, as many as there are parts: a
    // member can get several rows of one, and others none. That is meant.
    const bool expense = transaction.expense;
    const qint32 amount = transaction.invention.amount;
    const int count = expense ? drawOneOf(m_uniform, m_family.memberCount(), 1) : m_family.memberCount();
    for (int i = 0; i < count; ++i) {
        serveEvents();
        if (!isOpen())
            return false;
        const int member = expense ? drawOneOf(m_uniform, count, 0) : i;
        attempt([&] {
            if (expense)
                m_share = generatedExpenseShare(amount, count);
            else if (const auto share =
                         generatedRevenueShare(amount, m_family.memberRelations[member], m_family))
                m_share = *share;
        });
        transaction.parts.push_back({member, m_share});
    }
    return isOpen(); // the box of a failure serves events too
}

std::vector<RuntimeError> Generator::write()
{
    if (m_unwritten.empty())
        return {};
    Attempts attempts;
    const bool begun = attempts([&] { m_store->beginTrans(); });
    const QDateTime enteredOn = today();
    for (const Transaction &transaction : m_unwritten) {
        const Money total = Money::fromUnits(transaction.invention.amount);
        const auto add = [&](Recordset &table, const QString &enteredBy) {
            attempts([&] { table.addNew(); }); // saves the row before
            attempts.set(table, u"transactionid"_s, transaction.id);
            attempts.set(table, u"ddate"_s, transaction.invention.date);
            attempts.set(table, u"enteredon"_s, enteredOn);
            attempts.set(table, u"enteredby"_s, enteredBy);
            attempts.set(table, u"valid"_s, true);
            attempts.set(table, u"creditordebit"_s, !transaction.expense);
            attempts.set(table, u"transactiondetail"_s, m_words.transactionDetail);
            attempts.set(table, u"paymentdetail"_s, m_words.paymentDetail);
            attempts.set(table, u"paymentmethod"_s, transaction.invention.payment);
            attempts.set(table, u"gtype"_s, transaction.invention.kind);
        };
        add(*m_general, u"SYSTEM"_s);
        attempts.set(*m_general, u"amount"_s, total);
        attempts.set(*m_general, u"lastupdate"_s, enteredOn);
        for (const Part &part : transaction.parts) {
            add(*m_ledger, u"system"_s); // the two are meant to differ
            attempts.set(*m_ledger, u"name"_s, m_family.memberNames[part.member]);
            attempts.set(*m_ledger, u"amount"_s, part.share);
            attempts.set(*m_ledger, u"totalamount"_s, total);
        }
    }
    attempts([&] { m_ledger->update(); });
    attempts([&] { m_general->update(); });
    attempts([&] {
        if (m_settings->eof())
            return;
        m_settings->setValue(0, m_unwritten.back().id);
        m_settings->update();
    });
    if (!begun || attempts([&] { m_store->commitTrans(); })) {
        m_recordsMade += qint32(m_unwritten.size());
    } else { // of a full disk: nothing of them is there, and no row of theirs may follow alone
        attempts([&] { m_store->rollbackTrans(); });
        for (const RecordsetPtr &table : {m_ledger, m_general, m_settings}) {
            if (table->editMode() != EditMode::None)
                attempts([&] { table->cancelUpdate(); });
        }
    }
    m_unwritten.clear();
    return std::move(attempts.failures);
}

void Generator::tell(const std::vector<RuntimeError> &failures) const
{
    for (const RuntimeError &failure : failures)
        m_host.failed(failure);
}

void Generator::save()
{
    if (isOpen())
        tell(write());
}

void Generator::close()
{
    save();
    attempt([&] {
        if (!m_settings)
            throw runtime_errors::objectNotSet();
        m_settings->setValue(0, m_nextTransactionId);
        m_settings->update();
    });
    for (const RecordsetPtr &table : {m_ledger, m_general, m_settings}) {
        if (!table || !table->isOpen())
            continue;
        attempt([&] {
            if (table->editMode() != EditMode::None)
                table->update();
        });
        attempt([&] { table->close(); });
    }
    release();
}

void Generator::release()
{
    if (isOpen())
        write();
    m_settings.reset();
    m_ledger.reset();
    m_general.reset();
}
