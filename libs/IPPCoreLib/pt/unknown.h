// SPDX-License-Identifier: Apache-2.0
// The root class of the thread library.

#pragma once

#include <libs/IPPCoreLib/IPPCoreLibExport.h>

namespace pt {

/// Root of the thread library's classes: gives them a virtual destructor and nothing else.
class IPPCORELIB_EXPORT unknown
{
public:
    unknown() = default;
    virtual ~unknown();

    unknown(const unknown&) = delete;
    unknown& operator=(const unknown&) = delete;
};

} // namespace pt
