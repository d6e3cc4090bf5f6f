// SPDX-License-Identifier: Apache-2.0
// The single-instance application, as processes that meet each other and as one that is pestered.

#include <qtsingleapplication.h>

#include <libs/QtSolutions/qtsingleapplication/MessageClient.h>
#include <libs/QtSolutions/qtsingleapplication/MessageProtocol.h>
#include <libs/QtSolutions/qtsingleapplication/MessageServer.h>

#include <tests/support/DefaultLeakSuppressions.h>
#include <tests/support/ProcessFigures.h>
#include <tests/support/RawConnection.h>

#include <gtest/gtest.h>

#include <QDeadlineTimer>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLocalSocket>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QWidget>

#include <csignal>
#include <cstring>
#include <memory>
#include <vector>

#include <sys/file.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fcntl.h>

namespace {

constexpr int limit = 20000; // milliseconds that anything may take on a busy machine

constexpr int longerThanAnyTest = 10 * limit; // for sending: who tries so long does not come back in time

const uid_t nobody = 65534;

QString programPath()
{
    return QCoreApplication::applicationDirPath() + "/SingleApplicationProgram";
}

/// An instance of the program.
class Instance
{
public:
    Instance(const QString& temporaryFolder, const QStringList& arguments, const QString& program = programPath())
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("TMPDIR", temporaryFolder);
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        _process.setProcessEnvironment(environment);
        _process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        _process.start(program, arguments);
        EXPECT_TRUE(_process.waitForStarted(limit));
    }

    ~Instance()
    {
        if (_process.state() != QProcess::NotRunning) {
            send(SIGCONT);
            _process.kill();
            _process.waitForFinished();
        }
    }

    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;

    pid_t pid() const { return static_cast<pid_t>(_process.processId()); }

    /// The next line that it prints, or an empty one when it ends or nothing comes.
    QByteArray line()
    {
        const QDeadlineTimer deadline(limit);
        while (!_process.canReadLine())
            if (!_process.waitForReadyRead(static_cast<int>(deadline.remainingTime())))
                break;
        return _process.readLine().trimmed();
    }

    bool isFirst() { return line() == "first"; }

    /// How it ended, or -1.
    int exitCode()
    {
        const bool finished = _process.state() == QProcess::NotRunning || _process.waitForFinished(limit);
        return finished && _process.exitStatus() == QProcess::NormalExit ? _process.exitCode() : -1;
    }

    bool runs() { return _process.state() == QProcess::Running && !_process.waitForFinished(0); }

    /// Sends it a signal; nothing when it does not run, since its id is 0 then, which is everybody's.
    void send(int signal)
    {
        if (_process.state() == QProcess::Running)
            ::kill(pid(), signal);
    }

    void killWith(int signal)
    {
        send(signal);
        _process.waitForFinished(limit);
    }

    qint64 residentBytes() const { return ::residentBytes(pid()); }

    int openFiles() const { return ::openFiles(pid()); }

private:
    QProcess _process;
};

class SingleApplicationTest : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(_folder.isValid()); }

    QString folder() const { return _folder.path(); }

    QString userFolder() const { return folder() + QString("/qtsingleapplication-%1").arg(::geteuid()); }

    /// The one file with this ending that the running instance has made.
    QString only(const QString& ending) const
    {
        const QStringList names = QDir(userFolder()).entryList({"*." + ending}, QDir::Files | QDir::System);
        return names.size() == 1 ? userFolder() + '/' + names.first() : QString();
    }

    std::unique_ptr<Instance> start(const QString& message = "hello", int timeout = limit,
                                    const QStringList& more = {}) const
    {
        return std::make_unique<Instance>(folder(), QStringList({message, QString::number(timeout)}) + more);
    }

    /// A first instance that has said so.
    std::unique_ptr<Instance> startFirst(const QStringList& more = {}) const
    {
        auto instance = start("hello", limit, more);
        EXPECT_TRUE(instance->isFirst());
        return instance;
    }

    /// The running instance still takes a message.
    void expectStillAnswers(Instance& first) const
    {
        EXPECT_EQ(start("still there", limit)->exitCode(), 0);
        EXPECT_EQ(first.line(), "message 11 still there restored");
    }

    /// Whether the running instance ends a connection because of these bytes, and not because its time is over. Tried
    /// again when this process was kept waiting for so long that it cannot tell.
    bool endsAConnectionWith(const QByteArray& bytes) const
    {
        for (int attempt = 0; attempt < 10; ++attempt) {
            QElapsedTimer time;
            time.start();
            RawConnection connection(only("socket"));
            if (connection.write(bytes) && connection.isEndedWithin(limit) && time.elapsed() < MessageServer::timeLimit)
                return true;
        }
        return false;
    }

private:
    QTemporaryDir _folder{"/tmp/single-XXXXXX"};
};

TEST_F(SingleApplicationTest, ALaterInstanceHandsOverItsMessageAndEnds)
{
    const auto first = startFirst();
    EXPECT_EQ(start("open this")->exitCode(), 0);
    EXPECT_EQ(first->line(), "message 9 open this restored");
    EXPECT_TRUE(first->runs());
}

TEST_F(SingleApplicationTest, AnEmptyMessageArrives)
{
    const auto first = startFirst();
    EXPECT_EQ(start("")->exitCode(), 0);
    EXPECT_EQ(first->line(), "message 0  restored");
}

TEST_F(SingleApplicationTest, AMessageKeepsItsLetters)
{
    const auto first = startFirst();
    EXPECT_EQ(start(QString::fromUtf8("Größe 深度"))->exitCode(), 0);
    EXPECT_EQ(first->line(), "message 8 Größe 深度 restored");
}

TEST_F(SingleApplicationTest, TheLongestMessageArrivesAndALongerOneIsNotSent)
{
    const auto first = startFirst();
    EXPECT_EQ(start(QString("repeat:%1").arg(longestMessage))->exitCode(), 0);
    EXPECT_TRUE(first->line().startsWith("message 1048576 xxx"));
    EXPECT_EQ(start(QString("repeat:%1").arg(longestMessage + 1), longerThanAnyTest)->exitCode(), 1) << "it tried";
}

TEST_F(SingleApplicationTest, MessagesArriveInTheOrderOfTheirSending)
{
    const auto first = startFirst();
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(start(QString::number(i))->exitCode(), 0);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(first->line(), QString("message 1 %1 restored").arg(i).toUtf8());
}

TEST_F(SingleApplicationTest, AMessageLeavesTheWindowAloneWhenNotAskedToActivateIt)
{
    const auto first = startFirst({"", "stay"});
    EXPECT_EQ(start()->exitCode(), 0);
    EXPECT_EQ(first->line(), "message 5 hello minimised");
}

TEST_F(SingleApplicationTest, FiveStartsAtOnceLeaveExactlyOne)
{
    for (int round = 0; round < 3; ++round) {
        std::vector<std::unique_ptr<Instance>> instances;
        for (int i = 0; i < 5; ++i)
            instances.push_back(start("hello", limit));
        int running = 0;
        for (auto& instance : instances) {
            if (instance->isFirst()) {
                ++running;
                EXPECT_TRUE(instance->runs());
            } else {
                EXPECT_EQ(instance->exitCode(), 0);
            }
        }
        EXPECT_EQ(running, 1);
    }
}

TEST_F(SingleApplicationTest, AKilledInstanceDoesNotBlockTheNext)
{
    startFirst()->killWith(SIGKILL);
    EXPECT_FALSE(only("socket").isEmpty()) << "nothing was left behind to stumble over";
    const auto next = startFirst();
    expectStillAnswers(*next);
}

TEST_F(SingleApplicationTest, ACrashedInstanceDoesNotBlockTheNext)
{
    const rlimit none = {0, 0};
    ::setrlimit(RLIMIT_CORE, &none);
    startFirst()->killWith(SIGTRAP);
    const auto next = startFirst();
    expectStillAnswers(*next);
}

TEST_F(SingleApplicationTest, AnInstanceThatEndedGivesItsPlaceToTheNext)
{
    {
        const auto first = startFirst();
        first->killWith(SIGTERM);
    }
    startFirst();
}

TEST_F(SingleApplicationTest, AnInstanceThatDoesNotAnswerMakesSendingFailWhenTheTimeIsOver)
{
    const auto first = startFirst();
    first->send(SIGSTOP);
    QElapsedTimer time;
    time.start();
    const auto second = start("hello", 700);
    EXPECT_EQ(second->exitCode(), 1);
    EXPECT_GE(time.elapsed(), 700);
    EXPECT_TRUE(first->runs());
}

TEST_F(SingleApplicationTest, AnInstanceThatIsAboutToListenIsWaitedFor)
{
    startFirst()->killWith(SIGKILL);
    const QString socket = only("socket");
    const int lock = ::open(only("lock").toUtf8(), O_RDWR | O_CLOEXEC);
    ASSERT_EQ(::flock(lock, LOCK_EX | LOCK_NB), 0);

    const auto second = start("early", limit);
    QTest::qWait(300); // long enough for the other process to find nobody there, most of the time
    EXPECT_TRUE(second->runs());
    MessageServer server;
    QSignalSpy messages(&server, &MessageServer::messageReceived);
    ASSERT_TRUE(server.listen(socket));
    EXPECT_TRUE(QTest::qWaitFor([&] { return messages.count() == 1; }, limit));
    EXPECT_EQ(messages.value(0).value(0).toString(), "early");
    QTest::qWait(0);
    EXPECT_EQ(second->exitCode(), 0);
    ::close(lock);
}

TEST_F(SingleApplicationTest, WithoutAnIdentifierThePathOfTheExecutableTellsApplicationsApart)
{
    const QString copy = folder() + "/copy";
    ASSERT_TRUE(QFile::copy(programPath(), copy));
    const auto first = startFirst();
    Instance other(folder(), {"hello", "5000"}, copy);
    EXPECT_TRUE(other.isFirst());
    EXPECT_EQ(Instance(folder(), {"hello", "5000"}, copy).exitCode(), 0);
    EXPECT_TRUE(other.line().startsWith("message"));
}

TEST_F(SingleApplicationTest, WithOneIdentifierExecutablesBelongTogether)
{
    const QString copy = folder() + "/copy";
    ASSERT_TRUE(QFile::copy(programPath(), copy));
    const auto first = startFirst({"one id"});
    EXPECT_EQ(Instance(folder(), {"hello", "5000", "one id"}, copy).exitCode(), 0);
    startFirst({"another id"});
}

TEST_F(SingleApplicationTest, TheFolderAndTheSocketAreTheUsersOwn)
{
    const auto first = startFirst();
    struct stat status = {};
    ASSERT_EQ(::stat(userFolder().toUtf8(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700U);
    ASSERT_EQ(::stat(only("socket").toUtf8(), &status), 0);
    EXPECT_EQ(status.st_mode & 0077, 0U);
}

TEST_F(SingleApplicationTest, OtherUsersAreNotHeard)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can act as another user";
    const auto first = startFirst();
    const QByteArray socket = only("socket").toUtf8();
    ::chmod(folder().toUtf8(), 0777); // the permissions out of the way, so that the socket has to refuse
    ::chmod(userFolder().toUtf8(), 0777);
    ::chmod(socket, 0777);
    const pid_t child = ::fork();
    ASSERT_GE(child, 0); // as an id, -1 stands for every process there is
    if (child == 0) {
        bool ended = ::setuid(nobody) == 0;
        RawConnection connection(socket);
        ended = ended && connection.connected();
        connection.write(makeFrame("from somebody else"));
        ::_exit(ended && connection.isEndedWithin(limit) ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    ::chmod(userFolder().toUtf8(), 0700);
    expectStillAnswers(*first); // and the first line is not the other user's message
}

TEST_F(SingleApplicationTest, ASocketOfAnotherUserIsNotSentTo)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can act as another user";
    ::chmod(folder().toUtf8(), 0777);
    const QString socket = folder() + "/theirs.socket";
    const pid_t child = ::fork();
    ASSERT_GE(child, 0); // as an id, -1 stands for every process there is
    if (child == 0) {
        if (::setuid(nobody) != 0)
            ::_exit(1);
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, socket.toUtf8(), sizeof address.sun_path - 1);
        const int listener = ::socket(AF_UNIX, SOCK_STREAM, 0);
        if (::bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0)
            ::_exit(1);
        ::listen(listener, 5);
        ::pause();
        ::_exit(0);
    }
    ASSERT_TRUE(QTest::qWaitFor([&] { return RawConnection(socket).connected(); }, limit));
    EXPECT_FALSE(isAnswered(socket));
    QElapsedTimer time;
    time.start();
    EXPECT_FALSE(sendInstanceMessage(socket, "secret", longerThanAnyTest));
    EXPECT_LT(time.elapsed(), limit);
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
}

TEST_F(SingleApplicationTest, AFolderThatOthersMayEnterIsNotUsed)
{
    ASSERT_TRUE(QDir().mkpath(userFolder()));
    ::chmod(userFolder().toUtf8(), 0777);
    startFirst();
    EXPECT_TRUE(QDir(userFolder()).isEmpty(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot));
}

TEST_F(SingleApplicationTest, AFileInPlaceOfTheFolderDoesNotKeepTheProgramFromStarting)
{
    QFile file(userFolder());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    startFirst();
}

TEST_F(SingleApplicationTest, ALockThatWasTidiedAwayDoesNotLetASecondInstanceIn)
{
    const auto first = startFirst();
    ASSERT_TRUE(QFile::remove(only("lock")));
    EXPECT_EQ(start()->exitCode(), 0);
    EXPECT_EQ(first->line(), "message 5 hello restored");
}

TEST_F(SingleApplicationTest, ALongTemporaryFolderIsNoHindrance)
{
    const QString deep = folder() + '/' + QString(150, 'd');
    ASSERT_TRUE(QDir().mkpath(deep));
    const QString id = folder(); // unlike any other in the common folder
    Instance first(deep, {"hello", "5000", id});
    ASSERT_TRUE(first.isFirst());
    EXPECT_EQ(Instance(deep, {"hello", "5000", id}).exitCode(), 0);
    EXPECT_EQ(first.line(), "message 5 hello restored");
}

TEST_F(SingleApplicationTest, JunkEndsItsConnectionAndNothingElse)
{
    const auto first = startFirst();
    for (const QByteArray& junk : {QByteArray("GET / HTTP/1.1\r\n\r\n"), QByteArray("JUNK\0\0\0\1x", 9)})
        EXPECT_TRUE(endsAConnectionWith(junk)) << junk.constData();
    expectStillAnswers(*first);
}

TEST_F(SingleApplicationTest, AnAnnouncementOfAGiganticMessageEndsItsConnection)
{
    const auto first = startFirst();
    for (const QByteArray& length : {QByteArray("\xff\xff\xff\xff", 4), QByteArray("\x00\x10\x00\x01", 4)})
        EXPECT_TRUE(endsAConnectionWith(frameStart() + length)) << length.toHex().constData();
    expectStillAnswers(*first);
}

TEST_F(SingleApplicationTest, AnEndlessMessageDoesNotMakeTheProcessGrow)
{
    const auto first = startFirst();
    const qint64 before = first->residentBytes();
    ASSERT_GT(before, 0);
    const QByteArray block(1 << 20, 'x');
    RawConnection connection(only("socket"));
    ASSERT_TRUE(connection.write(makeFrame(block).left(frameHeaderSize)));
    int blocks = 0;
    while (blocks < 256 && connection.write(block))
        ++blocks;
    EXPECT_LT(blocks, 256);
    EXPECT_TRUE(first->line().startsWith("message 1048576 xxx")); // what was announced was a message
    expectStillAnswers(*first);
    EXPECT_LT(first->residentBytes() - before, 64 << 20);
}

TEST_F(SingleApplicationTest, AMessageInDripsIsEndedWhenItsTimeIsOver)
{
    const auto first = startFirst();
    const QByteArray frame = makeFrame(QByteArray(100000, 'x'));
    QElapsedTimer time;
    time.start(); // before the server's time begins, with the connection
    RawConnection connection(only("socket"));
    int sent = 0;
    while (sent < frame.size() && time.elapsed() < limit && connection.write(frame.mid(sent, 1))) {
        ++sent;
        QTest::qWait(20);
    }
    EXPECT_LT(sent, frame.size());
    EXPECT_GE(time.elapsed(), MessageServer::timeLimit / 2);
    EXPECT_LT(time.elapsed(), limit);
    expectStillAnswers(*first);
}

TEST_F(SingleApplicationTest, AConnectionThatSaysNothingIsEndedWhenItsTimeIsOver)
{
    const auto first = startFirst();
    RawConnection connection(only("socket"));
    expectStillAnswers(*first);
    EXPECT_TRUE(connection.isEndedWithin(limit));
}

TEST_F(SingleApplicationTest, AThousandSilentConnectionsLeaveRoomForAMessage)
{
    rlimit files = {};
    ::getrlimit(RLIMIT_NOFILE, &files);
    const rlimit many = {std::min<rlim_t>(files.rlim_max, 4096), files.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &many);
    const auto first = startFirst();
    const qint64 before = first->residentBytes();
    const QString socket = only("socket");
    std::vector<std::unique_ptr<RawConnection>> connections;
    for (int i = 0; i < 1000; ++i) {
        connections.push_back(std::make_unique<RawConnection>(socket));
        ASSERT_TRUE(connections.back()->connected());
    }
    expectStillAnswers(*first);
    EXPECT_LT(first->openFiles(), MessageServer::connectionLimit + 30);
    EXPECT_LT(first->residentBytes() - before, 32 << 20);
    ::setrlimit(RLIMIT_NOFILE, &files);
}

/// Whether a process may be left without descriptors: the sanitizers need some themselves, to look at memory.
constexpr bool canDoWithoutDescriptors()
{
#ifdef __SANITIZE_ADDRESS__
    return false;
#else
    return true;
#endif
}

TEST_F(SingleApplicationTest, AnInstanceThatRunsOutOfDescriptorsStillAnswers)
{
    if (!canDoWithoutDescriptors())
        GTEST_SKIP() << "the sanitizer needs descriptors of its own";
    const auto first = startFirst();
    const rlimit few = {static_cast<rlim_t>(first->openFiles()) + 3, static_cast<rlim_t>(first->openFiles()) + 3};
    ASSERT_EQ(::prlimit(first->pid(), RLIMIT_NOFILE, &few, nullptr), 0);
    std::vector<std::unique_ptr<RawConnection>> connections;
    for (int i = 0; i < 2 * MessageServer::connectionLimit; ++i)
        connections.push_back(std::make_unique<RawConnection>(only("socket")));
    expectStillAnswers(*first);
}

TEST_F(SingleApplicationTest, AnInstanceWithoutADescriptorAnswersOnceItHasOne)
{
    if (!canDoWithoutDescriptors())
        GTEST_SKIP() << "the sanitizer needs descriptors of its own";
    const auto first = startFirst();
    rlimit before = {};
    ASSERT_EQ(::prlimit(first->pid(), RLIMIT_NOFILE, nullptr, &before), 0);
    const rlimit none = {3, before.rlim_max};
    ASSERT_EQ(::prlimit(first->pid(), RLIMIT_NOFILE, &none, nullptr), 0);
    const auto second = start("waits", limit);
    QTest::qWait(5 * MessageServer::pause); // time for some vain attempts, most of the time
    EXPECT_TRUE(second->runs());
    ASSERT_EQ(::prlimit(first->pid(), RLIMIT_NOFILE, &before, nullptr), 0);
    EXPECT_EQ(second->exitCode(), 0);
    EXPECT_EQ(first->line(), "message 5 waits restored");
}

TEST_F(SingleApplicationTest, ConnectionsThatEndAtOnceLeaveNothingBehind)
{
    const auto first = startFirst();
    const int before = first->openFiles();
    bool gone = false;
    for (int attempt = 0; attempt < 5 && !gone; ++attempt) { // again when it took so long that time has ended them
        QElapsedTimer time;
        for (int i = 0; i < 200; ++i) {
            time.start();
            RawConnection(only("socket")).write("QSA");
        }
        EXPECT_TRUE(QTest::qWaitFor([&] { return first->openFiles() <= before; }, limit));
        gone = time.elapsed() < MessageServer::timeLimit;
    }
    EXPECT_TRUE(gone);
    expectStillAnswers(*first);
}

QtSingleApplication* application()
{
    return static_cast<QtSingleApplication*>(qApp);
}

TEST_F(SingleApplicationTest, TheRunningInstanceSendsNoMessageToItself)
{
    EXPECT_FALSE(application()->isRunning());
    EXPECT_FALSE(application()->isRunning());
    QElapsedTimer time;
    time.start();
    EXPECT_FALSE(application()->sendMessage("me", longerThanAnyTest));
    EXPECT_LT(time.elapsed(), limit);
}

TEST_F(SingleApplicationTest, TheIdentifierIsThePathOfTheExecutable)
{
    EXPECT_EQ(application()->id(), QCoreApplication::applicationFilePath());
}

TEST_F(SingleApplicationTest, TheActivationWindowIsRememberedAndMayBeDeleted)
{
    EXPECT_EQ(application()->activationWindow(), nullptr);
    auto window = std::make_unique<QWidget>();
    application()->setActivationWindow(window.get());
    EXPECT_EQ(application()->activationWindow(), window.get());
    window->showMinimized();
    application()->activateWindow();
    EXPECT_FALSE(window->isMinimized());
    EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
    window.reset();
    EXPECT_EQ(application()->activationWindow(), nullptr);
    application()->activateWindow();
}

TEST_F(SingleApplicationTest, ActivationKeepsAMaximisedWindowMaximised)
{
    QWidget window;
    window.setWindowState(Qt::WindowMaximized | Qt::WindowMinimized);
    application()->setActivationWindow(&window);
    application()->activateWindow();
    EXPECT_EQ(window.windowState() & (Qt::WindowMaximized | Qt::WindowMinimized), Qt::WindowMaximized);
}

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    const QTemporaryDir folder("/tmp/single-XXXXXX");
    qputenv("TMPDIR", folder.path().toUtf8());
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QtSingleApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
