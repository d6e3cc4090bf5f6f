// SPDX-License-Identifier: Apache-2.0
// The program pestered at the socket where it hears of later starts: it stays as it is, and hears of the next one.

#include "StartedProgram.h"

#include <libs/QtSolutions/qtsingleapplication/MessageProtocol.h>
#include <libs/QtSolutions/qtsingleapplication/MessageServer.h>

#include <tests/support/ProcessFigures.h>
#include <tests/support/RawConnection.h>

#include <algorithm>

#include <sys/resource.h>

namespace {

class ProgramSocketTest : public StartedProgram
{
protected:
    void SetUp() override
    {
        StartedProgram::SetUp();
        _first = &startFirst();
        EXPECT_EQ(exitCode(start()), 0); // its start is over
        ASSERT_FALSE(socket().isEmpty());
        _bytes = residentBytes(_first->processId());
        ASSERT_GT(_bytes, 0);
        _files = openFiles(_first->processId());
        ASSERT_GT(_files, 0);
    }

    /// A second start gets its answer, and the first has not grown for what it had to bear meanwhile.
    void expectUnharmed()
    {
        EXPECT_EQ(exitCode(start()), 0);
        EXPECT_TRUE(runs(*_first));
        EXPECT_LT(residentBytes(_first->processId()) - _bytes, 32 << 20);
        EXPECT_LE(openFiles(_first->processId()), _files + MessageServer::connectionLimit);
    }

private:
    QProcess* _first = nullptr;
    qint64 _bytes = 0;
    int _files = 0;
};

TEST_F(ProgramSocketTest, JunkIsTurnedAway)
{
    for (const QByteArray& junk :
         {QByteArray("GET / HTTP/1.1\r\n\r\n"), QByteArray(64, '\0'), QByteArray(64, '\xff')}) {
        RawConnection connection(socket());
        ASSERT_TRUE(connection.write(junk));
        EXPECT_TRUE(connection.isEndedWithin(limit));
    }
    expectUnharmed();
}

TEST_F(ProgramSocketTest, AMessageOfAClaimedHugeLengthIsTurnedAway)
{
    RawConnection connection(socket());
    ASSERT_TRUE(connection.write(frameStart() + QByteArray(4, '\xff')));
    EXPECT_TRUE(connection.isEndedWithin(limit));
    expectUnharmed();
}

TEST_F(ProgramSocketTest, AMessageThatNeverEndsIsCutOff)
{
    const QByteArray block(longestMessage, 'x');
    RawConnection connection(socket());
    ASSERT_TRUE(connection.write(makeFrame(block).left(frameHeaderSize)));
    int blocks = 0;
    while (blocks < 256 && connection.write(block))
        ++blocks;
    EXPECT_LT(blocks, 256);
    expectUnharmed();
}

TEST_F(ProgramSocketTest, JunkThatNeverEndsIsCutOff)
{
    const QByteArray block(longestMessage, 'x');
    RawConnection connection(socket());
    int blocks = 0;
    while (blocks < 256 && connection.write(block))
        ++blocks;
    EXPECT_LT(blocks, 256);
    expectUnharmed();
}

TEST_F(ProgramSocketTest, AConnectionThatSaysNothingIsEndedAndDoesNotKeepOthersOut)
{
    RawConnection connection(socket());
    expectUnharmed();
    EXPECT_TRUE(connection.isEndedWithin(limit));
}

TEST_F(ProgramSocketTest, AThousandConnectionsAtOnceDoNotKeepOthersOut)
{
    rlimit files = {};
    ::getrlimit(RLIMIT_NOFILE, &files);
    const rlimit many = {std::min<rlim_t>(files.rlim_max, 4096), files.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &many);
    std::vector<std::unique_ptr<RawConnection>> connections;
    for (int i = 0; i < 1000; ++i) {
        connections.push_back(std::make_unique<RawConnection>(socket()));
        ASSERT_TRUE(connections.back()->connected());
    }
    expectUnharmed();
    ::setrlimit(RLIMIT_NOFILE, &files);
}

} // namespace
