// SPDX-License-Identifier: Apache-2.0
// A camera node as the callbacks of the camera library find it: living or gone.

#pragma once

#include "CallbackCount.h"

#include <atomic>
#include <optional>

/// An entry of the process-wide list of living camera nodes. The camera library only has the address of its node, and a
/// bad one goes on calling back when that is gone: the list tells which addresses may still be touched.
///
/// Entries are used again but never deleted, since a late callback may be reading them; there are as many as nodes ever
/// lived at the same time. A node that is made at the address of one that is gone gets the late callbacks of the
/// other's stream, and ignores them unless it streams itself.
/// Thread: Visit on any thread, without a lock; the rest on the GUI thread.
class LiveDevice
{
public:
    /// A callback's stay in the node that it was given, if that lives. The node's destruction waits for its end.
    class Visit
    {
    public:
        explicit Visit(const void* device);

        /// Whether the node lives, and will until this visit ends.
        explicit operator bool() const { return _stay.has_value(); }

    private:
        std::optional<CallbackCount::Stay> _stay;
    };

    /// An entry for a new node, borrowed until Retire().
    static LiveDevice* Reserve();

    /// Lets visits to `device` in from now on: it is whole.
    void Admit(const void* device);

    /// Turns visits away from now on, and waits until the last one has ended.
    void Retire();

    /// The callbacks that are just taking a frame from the pool and handing it over.
    CallbackCount& HandOvers() { return _handOvers; }

private:
    LiveDevice() = default;

    std::atomic<const void*> _device{nullptr}; ///< null while nobody is let in
    CallbackCount _visits;
    CallbackCount _handOvers;
    bool _reserved = true;
    LiveDevice* _next = nullptr;
};
