#pragma once

#include "platform/database/recordset.h"
#include "tutorial/generator_family.h"

#include <QtCore/QDateTime>

#include <array>
#include <functional>
#include <vector>

class RuntimeError;

/// Uniform values in [0, 1).
using UniformSource = std::function<double()>;
/// A source that is seeded from the clock.
UniformSource clockSeededSource();

/// The texts of the made-up rows.
struct GeneratorWords {
    QString transactionDetail;
    QString paymentDetail;
    std::array<QString, 3> paymentMethods;
    QStringList
        detailTypes; ///< kinds of transaction; a run puts the numbers of the store's own in their place
};
/// The words of a language. In Arabic both details are empty.
GeneratorWords generatorWords(bool arabic);

/// One made-up transaction.
struct Invention {
    QDateTime date;    ///< one of the 5000 days behind 31 January 1995
    qint32 amount = 0; ///< 200 to 200199 whole units
    qint32 kind = 0;   ///< 1 to the last position in `detailTypes`, as `gtype` takes it
    QString payment;   ///< one of the methods
};
/// Draws one: its date, amount, kind and method, in this order. `kinds` are there, at least one.
Invention drawInvention(const UniformSource &uniform, qsizetype kinds, const GeneratorWords &words);

/// One run of the generator on the store at `engine.dbConnection`, step by step; events are served in every
/// step of a transaction.
///
/// A statement that fails is told and the run goes on with the next one; a row that the store refuses is left
/// out alone. The rows of fifty transactions and the number in `settings` are written together, and what is
/// left at the end of the run, with no event served in between: no transaction is ever half in the store, and
/// the next run begins behind the last one that is. What is posted while a run goes on takes a number of the
/// run as well, since `settings` is all that tells of numbers. A process that is killed takes the last
/// made-up transactions with it, fifty at the most.
class Generator
{
public:
    struct Host {
        std::function<bool()> isExpense; ///< the kind of the next transaction; else it is a revenue
        std::function<void(qint32 transactionId)> show; ///< before the transaction is divided
        std::function<void(const RuntimeError &)> failed;
    };

    Generator(GeneratorFamily family, GeneratorWords words, Host host, UniformSource uniform);

    /// Reads the last number and the kinds of revenue or expense, and opens the tables.
    void open(bool isRevenue);
    /// The tables stand open: nobody has closed them or their connection.
    bool isOpen() const;
    /// Makes one transaction. False when the tables were closed meanwhile: what was not written is lost.
    bool makeTransaction();
    /// Writes what was made so far.
    void save();
    /// Writes what is left, notes the last number and closes the tables.
    void close();
    /// The same without a word about failures.
    void release();
    /// Transactions that the store has taken, rows that it refused aside.
    qint32 recordsMade() const { return m_recordsMade; }

private:
    struct Part {
        int member;
        Money share;
    };
    struct Transaction {
        qint32 id;
        bool expense;
        Invention invention;
        std::vector<Part> parts; ///< one for each row of `ledger`
    };
    void attempt(const std::function<void()> &statement);
    bool divide(Transaction &transaction);
    std::vector<RuntimeError> write();
    void tell(const std::vector<RuntimeError> &failures) const;

    GeneratorFamily m_family;
    GeneratorWords m_words;
    Host m_host;
    UniformSource m_uniform;
    ConnectionPtr m_store;
    RecordsetPtr m_settings;
    RecordsetPtr m_ledger;
    RecordsetPtr m_general;
    std::vector<Transaction> m_unwritten;
    qint32 m_nextTransactionId = 0;
    qint32 m_recordsMade = 0;
    Money m_share; ///< the last one that was computed: it stands in for one that can't be
};
