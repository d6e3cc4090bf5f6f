// SPDX-License-Identifier: Apache-2.0
// The settings record and the reading and writing of its file.

#include "AppSettings.h"

#include "AppLogging.h"

#include <libconfig.h++>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <exception>
#include <memory>
#include <system_error>
#include <type_traits>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

static_assert(std::is_standard_layout_v<AppSettings>);
static_assert(std::is_same_v<decltype(AppSettings::useDarkSkin), bool>);
static_assert(std::is_same_v<decltype(AppSettings::width), std::int32_t>);
static_assert(std::is_same_v<decltype(AppSettings::height), std::int32_t>);
static_assert(std::is_same_v<decltype(AppSettings::binning), std::int32_t>);
static_assert(std::is_same_v<decltype(AppSettings::fps), float> && sizeof(float) == 4);
static_assert(std::is_same_v<decltype(AppSettings::currentApp), QString>);
static_assert(offsetof(AppSettings, useDarkSkin) < offsetof(AppSettings, width));
static_assert(offsetof(AppSettings, width) < offsetof(AppSettings, height));
static_assert(offsetof(AppSettings, height) < offsetof(AppSettings, binning));
static_assert(offsetof(AppSettings, binning) < offsetof(AppSettings, fps));
static_assert(offsetof(AppSettings, fps) < offsetof(AppSettings, currentApp));

namespace {

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

[[noreturn]] void throwLastError(const char* step)
{
    throw std::system_error(errno, std::generic_category(), step);
}

void check(bool done, const char* step)
{
    if (!done)
        throwLastError(step);
}

/// Opens the settings file for reading, as `Config::readFile` would.
///
/// The library ends the process when it is given a folder and waits for ever at a pipe without a writer, hence
/// the look at what has been opened before it is handed over.
File openForReading(const QByteArray& path)
{
    const int descriptor = ::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0)
        throw libconfig::FileIOException();
    File file(::fdopen(descriptor, "r"), std::fclose);
    if (file == nullptr) {
        ::close(descriptor);
        throw libconfig::FileIOException();
    }
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode))
        throw libconfig::FileIOException();
    return file;
}

/// Each value goes into its field as soon as it is read, so that what stands before a bad key is kept.
void readApplication(const libconfig::Setting& application, AppSettings& settings)
{
    settings.useDarkSkin = application["UseDarkSkin"];
    settings.currentApp = QString::fromUtf8(application["CurrentApp"].c_str());
}

void readCamera(const libconfig::Setting& camera, AppSettings& settings)
{
    settings.width = camera["Width"];
    settings.height = camera["Height"];
    settings.binning = camera["Binning"];
    settings.fps = camera["Fps"];
}

void readFile(AppSettings& settings)
{
    libconfig::Config config;
    config.read(openForReading(settingsFilePath().toUtf8()).get());
    const libconfig::Setting& root = config.lookup("AppConfig");
    if (root.exists("Application"))
        readApplication(config.lookup("AppConfig.Application"), settings);
    if (root.exists("Vyr"))
        readCamera(config.lookup("AppConfig.Vyr"), settings);
}

void fill(libconfig::Config& config, const AppSettings& settings)
{
    using libconfig::Setting;
    Setting& root = config.getRoot().add("AppConfig", Setting::TypeGroup);
    Setting& application = root.add("Application", Setting::TypeGroup);
    application.add("UseDarkSkin", Setting::TypeBoolean) = settings.useDarkSkin;
    application.add("CurrentApp", Setting::TypeString) = settings.currentApp.toUtf8().constData();
    Setting& camera = root.add("Vyr", Setting::TypeGroup);
    camera.add("Width", Setting::TypeInt) = settings.width;
    camera.add("Height", Setting::TypeInt) = settings.height;
    camera.add("Binning", Setting::TypeInt) = settings.binning;
    camera.add("Fps", Setting::TypeFloat) = settings.fps;
}

/// The new contents on their way into the settings file: a file beside it that takes its place once it is
/// complete and on the disk. It is gone afterwards, whatever happened.
///
/// Its name is always the same, so that one left by a power cut is taken up by the next save.
class Replacement
{
public:
    Replacement(const QByteArray& target, mode_t mode)
        : _target(target)
        , _path(target + ".new")
        , _file(nullptr, std::fclose)
    {
        ::unlink(_path.constData());
        const int descriptor = ::open(_path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        check(descriptor >= 0, "create");
        _file.reset(::fdopen(descriptor, "w"));
        if (_file == nullptr) {
            ::close(descriptor);
            ::unlink(_path.constData());
            throwLastError("open");
        }
    }

    ~Replacement()
    {
        if (!_placed)
            ::unlink(_path.constData());
    }

    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    std::FILE* file() const { return _file.get(); }

    void place()
    {
        check(std::fflush(file()) == 0 && std::ferror(file()) == 0, "write");
        check(::fsync(::fileno(file())) == 0, "flush");
        check(std::fclose(_file.release()) == 0, "close");
        check(::rename(_path.constData(), _target.constData()) == 0, "rename");
        _placed = true;
    }

private:
    QByteArray _target;
    QByteArray _path;
    File _file;
    bool _placed = false;
};

/// Makes the new name of a file survive a power cut.
void flushFolder(const QByteArray& path)
{
    const int descriptor = ::open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    check(descriptor >= 0, "open folder");
    const bool flushed = ::fsync(descriptor) == 0;
    ::close(descriptor);
    check(flushed, "flush folder");
}

void writeFile(const AppSettings& settings)
{
    libconfig::Config config;
    fill(config, settings);

    QString path = settingsFilePath();
    const QString behindLinks = QFileInfo(path).canonicalFilePath(); // empty when there is nothing
    if (!behindLinks.isEmpty())
        path = behindLinks;
    const QByteArray target = path.toUtf8();
    mode_t mode = 0666;
    struct stat status = {};
    if (!behindLinks.isEmpty() && ::stat(target.constData(), &status) == 0) {
        if (!S_ISREG(status.st_mode) || ::access(target.constData(), W_OK) != 0)
            throw libconfig::FileIOException();
        mode = status.st_mode & 0777;
    }
    Replacement replacement(target, mode);
    config.write(replacement.file());
    replacement.place();
    flushFolder(QFileInfo(path).path().toUtf8());
}

} // namespace

AppSettings& AppSettings::instance()
{
    static AppSettings* const settings = new AppSettings;
    return *settings;
}

QString settingsFilePath()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/settings/DashboardSettings.cfg");
}

void loadSettings()
{
    AppSettings& settings = AppSettings::instance();
    try {
        readFile(settings);
        return;
    } catch (const std::exception& failure) {
        qCWarning(appLog) << "Settings not read from" << settingsFilePath() << "-" << failure.what();
    } catch (...) {
        qCWarning(appLog) << "Settings not read from" << settingsFilePath();
    }
    saveSettings();
}

void saveSettings()
{
    const AppSettings& settings = AppSettings::instance();
    // Deliberately silent to the user: without a writable folder the program runs on, and forgets.
    try {
        writeFile(settings);
    } catch (const std::exception& failure) {
        qCWarning(appLog) << "Settings not written to" << settingsFilePath() << "-" << failure.what();
    } catch (...) {
        qCWarning(appLog) << "Settings not written to" << settingsFilePath();
    }
}
