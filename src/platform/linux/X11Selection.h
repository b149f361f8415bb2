#pragma once

#include <QByteArray>
#include <QList>
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>

struct xcb_connection_t;

namespace quillary::platform {

/// Reads one selection of the X server over a connection of its own, so that neither the toolkit's event loop nor the
/// main thread takes part: a program may even read what it owns itself.
///
/// Used on one thread at a time. The connection is made at the first question. An owner that stops answering is asked
/// no more: from then on everything reads as absent at once.
class X11Selection {
public:
    /// How long an owner may take.
    struct Patience {
        std::chrono::milliseconds targets{2000};  ///< to tell its types
        std::chrono::milliseconds data{4000};     ///< to begin an answer, which it may have to encode first
        std::chrono::milliseconds progress{3000}; ///< between two pieces of a long answer
        std::chrono::milliseconds whole{30000};   ///< for one answer in all
    };
    /// Longer answers are given up.
    static constexpr qsizetype largestAnswer = qsizetype(1) << 30;

    explicit X11Selection(QByteArray name, Patience patience);
    ~X11Selection();
    X11Selection(const X11Selection&) = delete;
    X11Selection& operator=(const X11Selection&) = delete;

    /// The names of the types that the owner offers, as it tells them; empty without an owner.
    QList<QByteArray> targets();
    /// The selection as `target`; absent when the owner refuses, vanishes or takes too long.
    std::optional<QByteArray> convert(const QByteArray& target);

private:
    using Clock = std::chrono::steady_clock;
    using Atom = std::uint32_t;
    struct Event;
    struct Property {
        Atom type = 0;
        QByteArray bytes;
    };

    bool connected();
    Atom atom(const QByteArray& name);
    QList<QByteArray> names(const QList<Atom>& atoms);
    std::optional<QByteArray> convert(Atom target, std::chrono::milliseconds patience);
    std::optional<QByteArray> receiveInPieces(Clock::time_point end);
    std::unique_ptr<Event> next(Clock::time_point deadline);
    /// Whether any program has the selection now.
    bool hasOwner();
    bool waitForAnswer(Atom target, Clock::time_point deadline, Atom& property);
    bool waitForPiece(Clock::time_point deadline);
    Property takeProperty();

    QByteArray m_name;
    Patience m_patience;
    xcb_connection_t* m_connection = nullptr;
    bool m_gaveUp = false;
    std::uint32_t m_window = 0;
    Atom m_selection = 0;
    Atom m_property = 0;
    Atom m_incr = 0;
};

} // namespace quillary::platform
