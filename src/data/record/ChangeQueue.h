// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vx {

/// What a window hears of a changed record: the two identifiers by which the store finds the record again.
struct SRecordIds {
    uint32_t id1 = 0; ///< Hash of the record's symbol.
    uint32_t id2 = 0; ///< Running number of the record, never reused, from 1.
};

/// How a change queue wakes the window whose changes it holds.
class CChangeWaker {
public:
    virtual ~CChangeWaker() = default;

    /// The queue was empty and holds a change now: show it with the next display update. Only notes it and returns.
    virtual void ChangesWait() = 0;

    /// A record that must be looked at at once has changed: post one "VXDOCS PAINT MSG" to the window and return.
    virtual void PostPaint() = 0;

    /// A record with armed alerts is about to change again: drain what is urgent now, so that no value is missed.
    /// Records may be unwatched from inside; nothing that opens a window or a nested event loop may run.
    virtual void DrainNow() = 0;
};

/// Changed records, oldest first, each at most once between two drains.
class CChangeRing {
public:
    CChangeRing();

    /// Changes with every drain: a record whose last change bears the present number still waits.
    uint64_t DrainNumber() const { return m_drainNumber; }
    size_t Size() const { return m_count; }
    void Push(const SRecordIds& ids) {
        if (m_count == m_ring.size()) Grow();
        m_ring[(m_first + m_count) & (m_ring.size() - 1)] = ids;
        ++m_count;
    }
    /// Makes room for so many changes.
    void Reserve(size_t changes);

    template <typename Visit> void Drain(Visit&& visit) {
        ++m_drainNumber;
        for (size_t left = m_count; left > 0 && m_count > 0; --left) visit(Pop());
    }

private:
    SRecordIds Pop() {
        const SRecordIds ids = m_ring[m_first];
        m_first = (m_first + 1) & (m_ring.size() - 1);
        --m_count;
        return ids;
    }
    void Grow();

    std::vector<SRecordIds> m_ring; ///< Size is a power of two.
    size_t m_first = 0;
    size_t m_count = 0;
    uint64_t m_drainNumber = 1;
};

/// The changed records that wait for one listening window. To the store it is the listener.
///
/// Changes that are only to be shown wait for the display update, however many there are. A record with armed alerts,
/// or one that the feed does not know, is urgent: it waits in a list of its own besides, and the window is woken.
///
/// Shape   each list holds a record at most once between two drains; the first change after a drain wakes the window
/// Owns    its lists; that of all changes grows when a record is watched and not when one changes; not the waker
class CChangeQueue {
public:
    explicit CChangeQueue(CChangeWaker& waker) : m_waker(waker) {}
    CChangeQueue(const CChangeQueue&) = delete;
    CChangeQueue& operator=(const CChangeQueue&) = delete;

    /// Takes out every change that waits and passes it to visit(const SRecordIds&). Changes that arrive meanwhile
    /// wait for the next drain and wake the window again.
    template <typename Visit> void Drain(Visit&& visit) {
        m_woken = false;
        m_all.Drain(visit);
    }
    /// The same for the urgent ones, which stay among all.
    template <typename Visit> void DrainUrgent(Visit&& visit) {
        m_posted = false;
        m_urgent.Drain(visit);
    }

    bool IsEmpty() const { return m_all.Size() == 0; }
    size_t Size() const { return m_all.Size(); }

    // What follows is for the records of the store.

    uint64_t DrainNumber() const { return m_all.DrainNumber(); }
    uint64_t UrgentNumber() const { return m_urgent.DrainNumber(); }
    void Push(const SRecordIds& ids);
    void PushUrgent(const SRecordIds& ids);
    /// Has the window drain what is urgent at once; the message that is on its way stays the only one.
    void DrainNow();
    /// One more, or one fewer, record notifies this queue; keeps room for one change of each.
    void AddSource() { m_all.Reserve(++m_sources); }
    void RemoveSource() { --m_sources; }

private:
    CChangeWaker& m_waker;
    CChangeRing m_all;
    CChangeRing m_urgent;
    size_t m_sources = 0;
    bool m_woken = false;  ///< The window knows that changes wait.
    bool m_posted = false; ///< A message is on its way and has not come back yet.
};

} // namespace vx
