// SPDX-License-Identifier: Apache-2.0
// A lock between processes that ends with the process.

#pragma once

class QString;

/// A lock on a file, held by at most one process at a time.
///
/// The system releases it when its holder ends, in whatever way. The file stays behind: to remove it would give
/// two processes the chance to lock two files of one name.
class InstanceLock
{
public:
    enum class Outcome {
        Acquired,
        HeldByAnother,
        Impossible ///< the file cannot be made or locked
    };

    InstanceLock() = default;
    ~InstanceLock();

    InstanceLock(const InstanceLock&) = delete;
    InstanceLock& operator=(const InstanceLock&) = delete;

    /// Takes the lock at `path` without waiting, and makes the file if there is none.
    Outcome acquire(const QString& path);

    /// Gives the lock back; does nothing when it is not held.
    void release();

private:
    int _descriptor = -1;
};
