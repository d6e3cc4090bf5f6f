// SPDX-License-Identifier: Apache-2.0
// The settings record and the reading and writing of its file.

#include "AppSettings.h"

#include "AppLogging.h"

#include <libconfig.h++>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <exception>
#include <memory>
#include <stdexcept>
#include <system_error>
#include <thread>
#include <type_traits>

#include <fcntl.h>
#include <sys/file.h>
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

/// In bytes. The library's time grows with the square of the number of settings, so that a mebibyte of them would
/// hold up the start for a minute; a file of ours has a few hundred bytes.
constexpr int longestFile = 64 * 1024;

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

/// What the settings file holds. A pipe without a writer would be waited at for ever, hence the look at what has been
/// opened.
QByteArray readText(const QByteArray& path)
{
    const int descriptor = ::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0)
        throw libconfig::FileIOException();
    const File file(::fdopen(descriptor, "r"), std::fclose);
    if (file == nullptr) {
        ::close(descriptor);
        throw libconfig::FileIOException();
    }
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode))
        throw libconfig::FileIOException();
    if (status.st_size > longestFile)
        throw std::length_error("too long");
    QByteArray text(static_cast<int>(status.st_size), '\0');
    const std::size_t length = std::fread(text.data(), 1, static_cast<std::size_t>(text.size()), file.get());
    if (std::ferror(file.get()) != 0)
        throw libconfig::FileIOException();
    text.truncate(static_cast<int>(length));
    return text;
}

/// Whether a line asks for another file to be read in its place. The library does that without a look at what it
/// opens: it waits for ever at a pipe, and ends the process at a folder.
bool includesAnotherFile(const QByteArray& text)
{
    const QList<QByteArray> lines = text.split('\n');
    return std::any_of(lines.begin(), lines.end(),
                       [](const QByteArray& line) { return line.trimmed().startsWith("@include"); });
}

void parse(libconfig::Config& config, const QByteArray& text)
{
    if (text.contains('\0')) // where the library would take the text to end
        throw std::invalid_argument("not a text");
    if (includesAnotherFile(text))
        throw std::invalid_argument("includes another file");
    config.readString(text.constData());
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
    const float fps = camera["Fps"]; // infinite for a number that is beyond it
    if (!std::isfinite(fps))
        throw std::range_error("Fps is out of range");
    settings.fps = fps;
}

void readFile(AppSettings& settings)
{
    libconfig::Config config;
    parse(config, readText(settingsFilePath().toUtf8()));
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

/// The folder of the settings file while the file is written, held against other programs that save theirs: several
/// users may share the file, and the new contents of all have the same name.
class HeldFolder
{
public:
    /// One that cannot be opened, as it may be written but not read, is neither held nor flushed.
    explicit HeldFolder(const QByteArray& path)
        : _descriptor(::open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
    {
    }

    ~HeldFolder()
    {
        if (_descriptor >= 0)
            ::close(_descriptor); // no longer held then
    }

    HeldFolder(const HeldFolder&) = delete;
    HeldFolder& operator=(const HeldFolder&) = delete;

    /// Waits until nobody else holds the folder, for a second at most: the user waits, too. Where the file system has
    /// no locks, nobody ever does.
    void hold() const
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(1);
        while (::flock(_descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
            if (std::chrono::steady_clock::now() > end)
                throw std::runtime_error("somebody else is saving all the time");
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }

    /// Makes the new name of a file survive a power cut.
    void flush() const
    {
        if (_descriptor >= 0)
            check(::fsync(_descriptor) == 0, "flush folder");
    }

private:
    int _descriptor;
};

/// The new contents on their way into the settings file: a file beside it that takes its place once it is
/// complete and on the disk. It is gone afterwards, whatever happened.
///
/// Its name is always the same, so that one left by a power cut is taken up by the next save.
class Replacement
{
public:
    explicit Replacement(const QByteArray& target)
        : _target(target)
        , _path(target + ".new")
        , _file(nullptr, std::fclose)
    {
        ::unlink(_path.constData());
        const int descriptor = ::open(_path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
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

constexpr mode_t permissionBits = 0777;

/// A setgid folder that its group may write is shared among that group.
bool isSharedFolder(const QByteArray& path)
{
    struct stat status = {};
    return ::stat(path.constData(), &status) == 0 && (status.st_mode & S_ISGID) != 0 && (status.st_mode & S_IWGRP) != 0;
}

/// In a shared folder the mask of whoever saves first must not shut out the others. That the permissions cannot be
/// changed, as on disks that know none, is no reason not to save.
void openToFoldersGroup(int descriptor, const QByteArray& folder)
{
    struct stat status = {};
    if (isSharedFolder(folder) && ::fstat(descriptor, &status) == 0)
        ::fchmod(descriptor, (status.st_mode & permissionBits) | S_IRGRP | S_IWGRP);
}

/// Whoever saves must not shut out those whom the file belongs to. Who may not give it back to its owner leaves it to
/// its group at least. Where neither can be, as on disks that know no owners, it is saved all the same.
void keepOwnersAndPermissions(int descriptor, const struct stat& status)
{
    constexpr auto sameOwner = static_cast<uid_t>(-1);
    if (::fchown(descriptor, status.st_uid, status.st_gid) != 0 && ::fchown(descriptor, sameOwner, status.st_gid) != 0)
        qCWarning(appLog) << "The settings file belongs to who has saved it now";
    ::fchmod(descriptor, status.st_mode & permissionBits);
}

void writeFile(const AppSettings& settings)
{
    if (!std::isfinite(settings.fps)) // which the library can write, but not read
        throw std::range_error("Fps is out of range");
    libconfig::Config config;
    fill(config, settings);

    QString path = settingsFilePath();
    const QString behindLinks = QFileInfo(path).canonicalFilePath(); // empty when there is nothing
    if (!behindLinks.isEmpty())
        path = behindLinks;
    const QByteArray target = path.toUtf8();
    const QByteArray folder = QFileInfo(path).path().toUtf8();
    const HeldFolder heldFolder(folder);
    heldFolder.hold();
    struct stat status = {};
    const bool replaces = ::stat(target.constData(), &status) == 0;
    if (replaces && (!S_ISREG(status.st_mode) || ::access(target.constData(), W_OK) != 0))
        throw libconfig::FileIOException();
    Replacement replacement(target);
    if (replaces)
        keepOwnersAndPermissions(::fileno(replacement.file()), status);
    else
        openToFoldersGroup(::fileno(replacement.file()), folder);
    config.write(replacement.file());
    if (std::ftell(replacement.file()) > longestFile)
        throw std::length_error("too long");
    replacement.place();
    heldFolder.flush();
}

} // namespace

AppSettings& AppSettings::instance()
{
    static auto* const settings = new AppSettings;
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
