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

    /// The queue was empty and holds a change now: post one "VXDOCS PAINT MSG" to the window and return.
    virtual void PostPaint() = 0;

    /// A record with armed alerts is about to change again: drain the queue now, so that no value is missed.
    /// Records may be unwatched from inside; nothing that opens a window or a nested event loop may run.
    virtual void DrainNow() = 0;
};

/// The changed records that wait for one listening window, oldest first. To the store it is the listener.
///
/// Shape   it holds a record at most once between two drains; the first change after a drain wakes the window
/// Owns    its ring, which grows when a record is watched and not when one changes; not the waker
class CChangeQueue {
public:
    explicit CChangeQueue(CChangeWaker& waker);
    CChangeQueue(const CChangeQueue&) = delete;
    CChangeQueue& operator=(const CChangeQueue&) = delete;

    /// Takes out every change that waits and passes it to visit(const SRecordIds&). Changes that arrive meanwhile
    /// wait for the next drain and wake the window again.
    template <typename Visit> void Drain(Visit&& visit) {
        for (size_t left = BeginDrain(); left > 0 && m_count > 0; --left) visit(Pop());
    }

    bool IsEmpty() const { return m_count == 0; }
    size_t Size() const { return m_count; }

    // What follows is for the records of the store.

    /// Changes with every drain: a record whose last change bears the present number still waits in the queue.
    uint64_t DrainNumber() const { return m_drainNumber; }
    void Push(const SRecordIds& ids);
    /// Has the window drain the queue at once; the wake that is on its way stays the only one.
    void DrainNow();
    /// One more, or one fewer, record notifies this queue; keeps room for one change of each.
    void AddSource();
    void RemoveSource() { --m_sources; }

private:
    size_t BeginDrain();
    SRecordIds Pop();
    void Grow();

    CChangeWaker& m_waker;
    std::vector<SRecordIds> m_ring; ///< Size is a power of two.
    size_t m_first = 0;
    size_t m_count = 0;
    size_t m_sources = 0;
    uint64_t m_drainNumber = 1;
    bool m_woken = false; ///< A wake was posted and its message has not come back yet.
};

} // namespace vx
