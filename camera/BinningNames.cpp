// SPDX-License-Identifier: Apache-2.0
// The camera's binning codes and their names.

#include "BinningNames.h"

namespace {

QMap<QString, int> codesByName()
{
    QMap<QString, int> codes;
    for (auto entry = binningNameByCode().cbegin(); entry != binningNameByCode().cend(); ++entry)
        codes.insert(entry.value(), entry.key());
    return codes;
}

} // namespace

const QMap<int, QString>& binningNameByCode()
{
    // Never destroyed: frames may still arrive, and their mode be named, while the process exits.
    static const auto* const names = new QMap<int, QString>{
        {0, "1x1"}, {4, "1x2"}, {8, "1x4"}, {1, "2x1"}, {5, "2x2"}, {9, "2x4"}, {2, "4x1"}, {6, "4x2"}, {10, "4x4"},
    };
    return *names;
}

const QMap<QString, int>& binningCodeByName()
{
    static const auto* const codes = new QMap<QString, int>(codesByName()); // never destroyed, as above
    return *codes;
}

QString binningName(int code)
{
    return binningNameByCode().value(code);
}
