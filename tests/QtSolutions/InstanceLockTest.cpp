// SPDX-License-Identifier: Apache-2.0
// The lock of an instance, when its file changes or cannot be looked at meanwhile.

#include <libs/QtSolutions/qtsingleapplication/InstanceLock.h>

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include <cerrno>
#include <functional>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

/// Take place before the system's look at an open file and at one with a name, if set, and make it fail unless they
/// return 0.
std::function<int()> look;
std::function<int()> lookAtName;

} // namespace

#pragma GCC visibility push(default)

// In front of the C library's, so that the lock calls these.

extern "C" int fstat(int descriptor, struct stat* status) noexcept
{
    return look && look() != 0 ? -1 : ::fstatat(descriptor, "", status, AT_EMPTY_PATH);
}

extern "C" int lstat(const char* path, struct stat* status) noexcept
{
    return lookAtName && lookAtName() != 0 ? -1 : ::fstatat(AT_FDCWD, path, status, AT_SYMLINK_NOFOLLOW);
}

#pragma GCC visibility pop

namespace {

class InstanceLockTest : public testing::Test
{
protected:
    void TearDown() override
    {
        look = nullptr;
        lookAtName = nullptr;
    }

    QTemporaryDir folder;
    QString path = folder.filePath("instance.lock");
    InstanceLock lock;
    int looks = 0;
};

TEST_F(InstanceLockTest, AFileThatIsRemovedBeforeItIsLockedIsMadeAgain)
{
    look = [this] {
        if (looks++ == 0) {
            EXPECT_TRUE(QFile::remove(path));
        }
        return 0;
    };
    EXPECT_EQ(lock.acquire(path), InstanceLock::Outcome::Acquired);
    EXPECT_EQ(looks, 2);
    EXPECT_TRUE(QFile::exists(path));
}

TEST_F(InstanceLockTest, AFileThatCannotBeLookedAtIsNotTriedForEver)
{
    look = [] {
        errno = EOVERFLOW; // what a 32-bit system says of a date or a number that it cannot hold
        return -1;
    };
    EXPECT_EQ(lock.acquire(path), InstanceLock::Outcome::Impossible);
    look = nullptr;
    InstanceLock other;
    EXPECT_EQ(other.acquire(path), InstanceLock::Outcome::Acquired) << "the first has kept it";
}

TEST_F(InstanceLockTest, AFileWhoseNameCannotBeLookedAtIsNotTriedForEver)
{
    lookAtName = [] {
        errno = EIO;
        return -1;
    };
    EXPECT_EQ(lock.acquire(path), InstanceLock::Outcome::Impossible);
}

} // namespace
