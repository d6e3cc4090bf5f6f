// SPDX-License-Identifier: Apache-2.0
// The camera that looks at the synthetic scene.

#pragma once

#include "Source.h"
#include "scene/Scene.h"

#include <cstdint>
#include <memory>

namespace simulator {

/// Looks at the synthetic scene with both eyes. What never moves is drawn once, which takes some hundredths of a second
/// and some megabytes: when the source is prepared, since many a program opens a camera long before it looks through
/// it. For a frame the drawing is copied, what moves is drawn over it, and noise is added.
class SyntheticSource : public Source
{
public:
    SyntheticSource();
    ~SyntheticSource() override;

    std::string deviceName() const override;

    /// False: what the scene shows has no distortion of its own.
    bool undistorts() const override;

    void prepare() override;
    bool next(const PictureRequest& request, StereoPicture& picture) override;

    /// The scene, whose geometry tells the true disparities. Only of a prepared source.
    const Scene& scene() const;

private:
    struct View;

    std::unique_ptr<View> _view; ///< null until prepared
};

} // namespace simulator
