// SPDX-License-Identifier: Apache-2.0
// Who makes this program, and where it is on the web.

#pragma once

namespace Vendor {

constexpr char organizationName[] = "VYR Technologies";
constexpr char organizationDomain[] = "vyrtech.com";
constexpr char webSite[] = "https://vyrtech.com/";
constexpr char licenceTerms[] = "https://vyrtech.com/license";
constexpr char documentation[] = "https://vyrtech.com/dashboard/docs";

} // namespace Vendor
