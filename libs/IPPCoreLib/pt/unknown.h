// SPDX-License-Identifier: Apache-2.0
// The root class of the thread library.

#pragma once

#include <libs/IPPCoreLib/IPPCoreLibExport.h>

/// The thread library under the processing nodes, on POSIX threads. What fails in it, or is misused, ends the process
/// (pt::fatal()).
namespace pt {

/// Root of the thread library's classes: gives them a virtual destructor and nothing else.
class IPPCORELIB_EXPORT unknown
{
public:
    /// Nothing to set up.
    unknown() = default;
    virtual ~unknown();

    unknown(const unknown&) = delete;
    unknown& operator=(const unknown&) = delete;
};

} // namespace pt
