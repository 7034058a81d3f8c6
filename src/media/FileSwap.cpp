#include "media/FileSwap.h"

#include <exception>

#include "media/FileNames.h"
#include "platform/files/FileSystem.h"

namespace torvex {

namespace {

/// Beside the file, under a name that no list of files shows and no visitor gets.
std::string asideOf(const std::string& place) {
    return place.substr(0, place.rfind('/') + 1) + ".torvex-" + randomFileName("") + ".tmp";
}

}  // namespace

FileSwap::FileSwap(FileSystem& files, std::string by, std::string place)
    : files_(files), by_(std::move(by)), place_(std::move(place)) {
    if (files_.fileExists(place_)) {
        aside_ = asideOf(place_);
        files_.copyFile(place_, aside_);
    }
    try {
        files_.moveFile(by_, place_);
    } catch (...) {
        if (!aside_.empty()) files_.deleteFile(aside_);
        throw;
    }
}

FileSwap::~FileSwap() {
    try {
        if (isKept_) {
            if (!aside_.empty()) files_.deleteFile(aside_);
            return;
        }
        files_.moveFile(place_, by_);
        if (!aside_.empty()) files_.moveFile(aside_, place_);
    } catch (const std::exception&) {
        // The disk has failed in the middle of going back: nothing more can be done here.
    }
}

void FileSwap::keep() {
    isKept_ = true;
}

}  // namespace torvex
