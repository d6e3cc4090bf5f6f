// SPDX-License-Identifier: Apache-2.0
// What must hold for every text that anything may have put in place of the settings file.

#include "SettingsFileCheck.h"

#include <app/AppSettings.h>

#include <libconfig.h++>

#include <QByteArray>
#include <QCoreApplication>
#include <QDir>

#include <cmath>
#include <cstdint>
#include <functional>
#include <stdexcept>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using libconfig::Setting;

constexpr int longestText = 64 * 1024;

/// The settings file under the descriptor that it was opened with. As long as that is open, no other file can be
/// taken for it.
class OpenFile
{
public:
    explicit OpenFile(int flags)
        : _descriptor(::open(settingsFilePath().toUtf8().constData(), flags | O_CLOEXEC, 0600))
    {
        if (_descriptor < 0)
            throw std::runtime_error("no settings file");
    }

    ~OpenFile() { ::close(_descriptor); }

    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    void write(const QByteArray& text) const
    {
        if (::write(_descriptor, text.constData(), static_cast<std::size_t>(text.size())) != text.size())
            throw std::runtime_error("cannot write the text");
    }

    QByteArray contents() const
    {
        struct stat status = {};
        ::fstat(_descriptor, &status);
        QByteArray text(static_cast<int>(status.st_size), '\0');
        if (::pread(_descriptor, text.data(), static_cast<std::size_t>(text.size()), 0) != text.size())
            throw std::runtime_error("cannot read the file");
        return text;
    }

    /// Whether another file goes by its name by now.
    bool isReplaced() const
    {
        struct stat open = {};
        struct stat named = {};
        if (::fstat(_descriptor, &open) != 0 || ::lstat(settingsFilePath().toUtf8().constData(), &named) != 0)
            throw std::runtime_error("the settings file is gone");
        return open.st_ino != named.st_ino;
    }

private:
    int _descriptor;
};

/// What reading a text has to come to.
struct Reading
{
    AppSettings values;
    bool isWhole = false; ///< nothing had to stop it
};

/// Takes the value of a key over into its field; false when it is missing or of another type.
bool take(const Setting& group, const char* key, Setting::Type type, const std::function<bool(const Setting&)>& store)
{
    return group.isGroup() && group.exists(key) && group[key].getType() == type && store(group[key]);
}

bool takeApplication(const Setting& group, AppSettings& values)
{
    return take(group, "UseDarkSkin", Setting::TypeBoolean,
                [&](const Setting& value) {
                    values.useDarkSkin = value;
                    return true;
                })
        && take(group, "CurrentApp", Setting::TypeString, [&](const Setting& value) {
               values.currentApp = QString::fromUtf8(value.c_str());
               return true;
           });
}

bool takeNumber(const Setting& group, const char* key, std::int32_t& field)
{
    return take(group, key, Setting::TypeInt, [&](const Setting& value) {
        field = value;
        return true;
    });
}

bool takeCamera(const Setting& group, AppSettings& values)
{
    return takeNumber(group, "Width", values.width) && takeNumber(group, "Height", values.height)
        && takeNumber(group, "Binning", values.binning)
        && take(group, "Fps", Setting::TypeFloat, [&](const Setting& value) {
               const float fps = value;
               if (!std::isfinite(fps))
                   return false;
               values.fps = fps;
               return true;
           });
}

bool isRefused(const QByteArray& text)
{
    if (text.size() > longestText || text.contains('\0'))
        return true;
    for (const QByteArray& line : text.split('\n'))
        if (line.trimmed().startsWith("@include"))
            return true;
    return false;
}

Reading readingOf(const QByteArray& text)
{
    Reading reading;
    if (isRefused(text))
        return reading;
    libconfig::Config config;
    try {
        config.readString(text.constData());
    } catch (const libconfig::ParseException&) {
        return reading;
    }
    if (!config.exists("AppConfig"))
        return reading;
    if (config.exists("AppConfig.Application")
        && !takeApplication(config.lookup("AppConfig.Application"), reading.values))
        return reading;
    if (config.exists("AppConfig.Vyr") && !takeCamera(config.lookup("AppConfig.Vyr"), reading.values))
        return reading;
    reading.isWhole = true;
    return reading;
}

bool isComplete(const QByteArray& text)
{
    libconfig::Config config;
    config.readString(text.constData());
    for (const char* key :
         {"Application.UseDarkSkin", "Application.CurrentApp", "Vyr.Width", "Vyr.Height", "Vyr.Binning", "Vyr.Fps"})
        if (!config.exists(std::string("AppConfig.") + key))
            return false;
    return readingOf(text).isWhole;
}

bool isSame(const AppSettings& one, const AppSettings& other)
{
    return one.useDarkSkin == other.useDarkSkin && one.currentApp == other.currentApp && one.width == other.width
        && one.height == other.height && one.binning == other.binning && std::equal_to<>()(one.fps, other.fps);
}

AppSettings load()
{
    AppSettings::instance() = AppSettings();
    loadSettings();
    return AppSettings::instance();
}

} // namespace

void makeSettingsFolder()
{
    if (!QDir().mkpath(QCoreApplication::applicationDirPath() + "/settings"))
        throw std::runtime_error("cannot make the settings folder");
}

std::string checkSettingsFile(const QByteArray& text)
{
    const OpenFile given(O_RDWR | O_CREAT | O_TRUNC);
    given.write(text);
    const Reading expected = readingOf(text);
    if (!isSame(load(), expected.values))
        return "the record does not hold what the file says";
    if (given.isReplaced() == expected.isWhole)
        return expected.isWhole ? "a file that could be read was written anew" : "a bad file was left as it is";
    if (given.contents() != text)
        return "the file was not replaced as a whole";

    const OpenFile left(O_RDONLY);
    if (!expected.isWhole && !isComplete(left.contents()))
        return "the new file is not complete";
    if (!isSame(load(), expected.values))
        return "the next start finds other values";
    if (left.isReplaced())
        return "the next start cannot read the file";
    return std::string();
}
