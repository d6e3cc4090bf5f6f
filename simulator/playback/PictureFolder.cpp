// SPDX-License-Identifier: Apache-2.0
// A recording kept as one picture file per frame and eye.

#include "PictureFolder.h"

#include <opencv2/imgcodecs.hpp>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <fstream>
#include <iterator>
#include <string_view>

namespace simulator {

namespace fs = std::filesystem;

namespace {

constexpr const char* leftFolder = "left";
constexpr const char* rightFolder = "right";

bool isPicture(const fs::directory_entry& entry)
{
    if (!entry.is_regular_file())
        return false;
    std::string ending = entry.path().extension().string();
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return ending == ".png" || ending == ".jpg" || ending == ".jpeg" || ending == ".pgm";
}

std::vector<std::string> pictureNames(const fs::path& folder)
{
    if (!fs::is_directory(folder))
        throw UnreadableRecording(folder.string() + ": no such folder");
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder))
        if (isPicture(entry))
            names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

/// Whether a file's first bytes are those of a PNG, a JPEG or a PGM picture. Others are not shown to OpenCV at all,
/// which would try them on every format it knows.
bool startsLikeAPicture(const std::vector<char>& bytes)
{
    const std::string_view start(bytes.data(), bytes.size());
    for (const std::string_view signature : {"\x89PNG", "\xFF\xD8\xFF", "P2", "P5"})
        if (start.substr(0, signature.size()) == signature)
            return true;
    return false;
}

cv::Mat readPicture(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    const std::vector<char> bytes((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    cv::Mat picture;
    try {
        if (startsLikeAPicture(bytes))
            picture = cv::imdecode(bytes, cv::IMREAD_GRAYSCALE);
    } catch (const cv::Exception&) {
        // Told below, as for a file that is no picture at all.
    }
    if (picture.empty())
        throw UnreadableRecording(file.string() + ": cannot be decoded as a picture");
    return picture;
}

} // namespace

PictureFolder::PictureFolder(const fs::path& folder)
    : _folder(folder)
{
    const std::vector<std::string> left = pictureNames(folder / leftFolder);
    const std::vector<std::string> right = pictureNames(folder / rightFolder);
    std::set_intersection(left.begin(), left.end(), right.begin(), right.end(), std::back_inserter(_names));
    if (_names.empty()) {
        throw UnreadableRecording(folder.string()
                                  + ": left and right hold no equally named pictures (PNG, JPEG or PGM)");
    }
}

RecordedPair PictureFolder::read()
{
    const std::string name = _names[_next];
    try {
        RecordedPair pair = {readPicture(_folder / leftFolder / name), readPicture(_folder / rightFolder / name)};
        _next = (_next + 1) % _names.size();
        return pair;
    } catch (const UnreadableRecording&) {
        _names.erase(_names.begin() + static_cast<std::ptrdiff_t>(_next));
        _next = _next < _names.size() ? _next : 0;
        throw;
    }
}

bool PictureFolder::isExhausted() const
{
    return _names.empty();
}

} // namespace simulator
