// SPDX-License-Identifier: Apache-2.0
// Stereo View beside a camera library that does not tell its picture layout.

#include "StereoViewFixture.h"

#include <FakeVYR.h>

#include <gmock/gmock.h>

namespace {

using StereoViewNoLayout = StereoViewFixture;

TEST_F(StereoViewNoLayout, SaysSoAndReadsNoFrame)
{
    FakeVYR::reset();
    load(FakeVYR::defaultModes().front());
    host->start();
    EXPECT_THAT(message().toStdString(), testing::HasSubstr("picture layout of this camera library is not known"));
    FakeVYR::emitFrame(1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return host->cameraDevice()->Size() == 0; }));
    EXPECT_FALSE(app->updatePending());
}

} // namespace
