#pragma once

#include <functional>
#include <utility>
#include <vector>

/// A list of handlers that are called in the order of their connection. Handlers may throw: the exception
/// reaches whoever raised the event, and the handlers behind it are not called. A handler may disconnect
/// itself or others while the event is raised.
template <typename... Arguments>
class Event
{
public:
    using Handler = std::function<void(Arguments...)>;

    /// Returns a number for disconnect().
    int connect(Handler handler)
    {
        m_handlers.push_back({++m_last, std::move(handler)});
        return m_last;
    }
    void disconnect(int number)
    {
        std::erase_if(m_handlers, [number](const Entry &entry) { return entry.number == number; });
    }
    void raise(Arguments... arguments) const
    {
        const auto handlers = m_handlers;
        for (const Entry &entry : handlers) {
            if (isConnected(entry.number))
                entry.handler(arguments...);
        }
    }

private:
    struct Entry {
        int number;
        Handler handler;
    };
    bool isConnected(int number) const
    {
        for (const Entry &entry : m_handlers) {
            if (entry.number == number)
                return true;
        }
        return false;
    }
    std::vector<Entry> m_handlers;
    int m_last = 0;
};
