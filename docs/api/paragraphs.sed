# SPDX-License-Identifier: Apache-2.0
# What the reference makes of the headers' way of writing: the line of purpose at the top describes the file, and what is
# said of threads and owners gets a heading.

2s|^// \(.*\)|/// @file\n/// \1|
2s|^/\* \(.*\) \*/|/** @file\n * \1 */|
s|^\( *///\) \(Thread\): |\1 @par \2\n\1 |
s|^\( *///\) \(Ownership\): |\1 @par \2\n\1 |
s|^\( *///\)\( .*[.);]\) \(Thread\): |\1\2\n\1 @par \3\n\1 |
