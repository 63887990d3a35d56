#pragma once

#include "platform/ui/dialogs.h"

#include <QtCore/QStringList>

#include <deque>
#include <functional>
#include <random>

class Screen;

/// Who sits before the program in a soak: agrees to every box, saves to a folder of exports, prints into a
/// file there, and deals with the modal windows that commands open.
class SoakUser : public DialogService
{
public:
    using Action = std::function<void(Screen &)>;

    /// `exports` is a folder; `look` is called now and then while a box stands.
    SoakUser(const QString &exports, std::uint32_t seed, std::function<void()> look);
    ~SoakUser() override;

    /// A number from 0 to `count` - 1.
    int pick(int count);
    bool oneIn(int count) { return pick(count) == 0; }

    /// Acts on the modal screen of this name as soon as it stands; windows come in the order of the calls.
    void onModal(const char *screenName, Action action);
    /// None is waited for any more.
    void forgetModals() { m_waits.clear(); }
    /// Runs a piece of the soak inside the event loop. What it throws is kept as the failure and ends the
    /// program's process.
    void guarded(const std::function<void()> &piece);

    /// Says whether a box with this beginning came since the last forget().
    bool wasTold(const QString &beginning) const;
    /// @throws std::runtime_error when none came
    void expectTold(const QString &beginning) const;
    /// @throws std::runtime_error when a box told a failure, or a modal window did not come
    void expectAllWell() const;
    void forget();
    /// All boxes since then.
    QString told() const { return m_told.join(QStringLiteral(" | ")); }

    QString failure;  ///< why the soak stopped; empty when it did not
    QString lastFile; ///< saved or printed last

    MessageAnswer message(const MessageRequest &request) override;
    QString input(const QString &prompt, const QString &title, const QString &defaultText) override;
    std::optional<FontChoice> font(const FontChoice &initial) override;
    std::optional<QString> saveFile(const SaveFileRequest &request) override;
    bool print(QPrinter &printer) override;

private:
    struct Wait {
        const char *screenName;
        Action action;
        qint64 until; ///< the monotonic clock's milliseconds
    };
    void lookForModal();

    DialogService *m_before;
    QString m_exports;
    std::mt19937 m_chance;
    std::function<void()> m_look;
    std::deque<Wait> m_waits;
    QStringList m_told;
};
