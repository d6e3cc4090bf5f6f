// SPDX-License-Identifier: Apache-2.0
// What the user has chosen in Stereo View.

#include "ViewChoices.h"

#include <QSettings>

#include <algorithm>
#include <tuple>

namespace {

/// Where apps of the program keep their choices, each in a group of its own.
class ChoicesStore : public QSettings
{
public:
    ChoicesStore()
        : QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("VYRDashboard"), QStringLiteral("Apps"))
    {
        beginGroup(QStringLiteral("StereoView"));
    }
};

int percentOf(const QVariant& value)
{
    return std::clamp(value.toInt(), 0, 100);
}

/// Not toBool(), to which all but a few words are true.
bool isOn(const QVariant& value)
{
    const QString text = value.toString();
    return text == QLatin1String("true") || text == QLatin1String("1");
}

} // namespace

bool operator==(const ViewChoices& a, const ViewChoices& b)
{
    const auto all = [](const ViewChoices& choices) {
        return std::tie(choices.exposure, choices.gain, choices.led, choices.horizontalFlip, choices.verticalFlip,
                        choices.swapCameras, choices.undistort, choices.arrangement);
    };
    return all(a) == all(b);
}

ViewChoices loadViewChoices()
{
    const ChoicesStore store;
    ViewChoices choices;
    choices.exposure = percentOf(store.value(QStringLiteral("exposure")));
    choices.gain = percentOf(store.value(QStringLiteral("gain")));
    choices.led = percentOf(store.value(QStringLiteral("led")));
    choices.horizontalFlip = isOn(store.value(QStringLiteral("horizontalFlip")));
    choices.verticalFlip = isOn(store.value(QStringLiteral("verticalFlip")));
    choices.swapCameras = isOn(store.value(QStringLiteral("swapCameras")));
    choices.undistort = isOn(store.value(QStringLiteral("undistort")));
    choices.arrangement = arrangementOfKey(store.value(QStringLiteral("arrangement")).toString());
    return choices;
}

void storeViewChoices(const ViewChoices& choices)
{
    ChoicesStore store;
    store.setValue(QStringLiteral("exposure"), choices.exposure);
    store.setValue(QStringLiteral("gain"), choices.gain);
    store.setValue(QStringLiteral("led"), choices.led);
    store.setValue(QStringLiteral("horizontalFlip"), choices.horizontalFlip);
    store.setValue(QStringLiteral("verticalFlip"), choices.verticalFlip);
    store.setValue(QStringLiteral("swapCameras"), choices.swapCameras);
    store.setValue(QStringLiteral("undistort"), choices.undistort);
    store.setValue(QStringLiteral("arrangement"), arrangementKey(choices.arrangement));
}
