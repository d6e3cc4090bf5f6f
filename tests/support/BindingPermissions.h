// SPDX-License-Identifier: Apache-2.0
// File permissions that count for root, too.

#pragma once

#include <linux/capability.h>
#include <linux/securebits.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

/// While it lives, file permissions bind this thread as they bind any user: root gives up the right to pass over them,
/// and to give files to others. Files that the thread makes are still root's own.
class BindingPermissions
{
public:
    BindingPermissions()
    {
        if (::syscall(SYS_capget, &_header, _before) != 0)
            return;
        // Without this bit access() answers with the rights that root could have instead of those that it has.
        const bool fixed = ::prctl(PR_SET_SECUREBITS, _securebits | SECBIT_NO_SETUID_FIXUP) == 0;
        __user_cap_data_struct reduced[_LINUX_CAPABILITY_U32S_3] = {_before[0], _before[1]};
        reduced[0].effective &= ~(1U << CAP_DAC_OVERRIDE | 1U << CAP_DAC_READ_SEARCH | 1U << CAP_CHOWN);
        _inForce = ::syscall(SYS_capset, &_header, reduced) == 0 && (fixed || ::getuid() != 0);
    }

    ~BindingPermissions()
    {
        ::syscall(SYS_capset, &_header, _before);
        ::prctl(PR_SET_SECUREBITS, _securebits);
    }

    BindingPermissions(const BindingPermissions&) = delete;
    BindingPermissions& operator=(const BindingPermissions&) = delete;

    /// False where root cannot give up its rights, as in some sandboxes.
    bool inForce() const { return _inForce; }

private:
    __user_cap_header_struct _header = {_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct _before[_LINUX_CAPABILITY_U32S_3] = {};
    unsigned long _securebits = static_cast<unsigned long>(::prctl(PR_GET_SECUREBITS));
    bool _inForce = false;
};
