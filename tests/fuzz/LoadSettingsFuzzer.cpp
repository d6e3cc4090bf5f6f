// SPDX-License-Identifier: Apache-2.0
// Reads one text after the other as the settings file, beside this program; run.sh starts it.

#include "LibConfigLeaks.h"
#include "SettingsFileCheck.h"

#include <QByteArray>
#include <QCoreApplication>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    static const QCoreApplication application(*argc, *argv);
    makeSettingsFolder();
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    const std::string fault =
        checkSettingsFile(QByteArray(reinterpret_cast<const char*>(bytes), static_cast<int>(size)));
    if (!fault.empty()) {
        std::fprintf(stderr, "%s\n", fault.c_str());
        std::abort();
    }
    return 0;
}
