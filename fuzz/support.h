#pragma once

#include "platform/database/connection.h"
#include "platform/runtime/runtime_error.h"
#include "platform/runtime/value.h"

#include <QtCore/QByteArrayView>
#include <QtCore/QString>

#include <optional>

// One body for two programs: a libFuzzer harness, and the replay of its corpus under any compiler.
#ifdef QUVANA_LIBFUZZER
#define FUZZ_HARNESS(name)                                                                                   \
    static void fuzz_##name(QByteArrayView input);                                                           \
    extern "C" int LLVMFuzzerTestOneInput(const char *data, std::size_t size)                                \
    {                                                                                                        \
        fuzz_##name(QByteArrayView(data, qsizetype(size)));                                                  \
        return 0;                                                                                            \
    }                                                                                                        \
    static void fuzz_##name(QByteArrayView input)
#else
#define FUZZ_HARNESS(name)                                                                                   \
    static void fuzz_##name(QByteArrayView input);                                                           \
    static const fuzz::Registration registration_##name(#name, fuzz_##name);                                 \
    static void fuzz_##name(QByteArrayView input)
#endif

namespace fuzz
{

/// What the replay runs: a harness by its name.
struct Registration {
    Registration(const char *name, void (*run)(QByteArrayView));
};

/// Ends the process when a promise is broken, with words for the finding.
void require(bool kept, const char *promise);

/// What the work was refused with; nothing when it was done. Any other exception is a finding, and so is a
/// refusal without words.
template <typename Work>
std::optional<RuntimeError> refusal(Work &&work)
{
    try {
        work();
        return std::nullopt;
    } catch (const RuntimeError &error) {
        require(!error.description().isEmpty(), "a refusal has words");
        return error;
    }
}

/// The first letter tells the kind of the value (Double, Money, Long, date as a number, Boolean, text), the
/// rest is its text. @throws RuntimeError when that can't be read
Value valueOf(const QString &text);

/// A place in memory where there is one, else on the disk; it goes when the process ends by itself.
const QString &folder();

/// A connection to a store with all tables and rows of every kind, open as long as the process.
const ConnectionPtr &seededStore();

} // namespace fuzz
