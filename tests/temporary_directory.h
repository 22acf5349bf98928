#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <string>

#include "tests/secrets/secret_search.h"
#include "tests/unwatched.h"

// Fails the test when a secret was written into a file, or into a file below a directory.
inline void ExpectNoSecretIn(const std::string& place) {
    const Unwatched searching;
    for (const std::string& told : FilesWithSecrets(place)) ADD_FAILURE() << "a secret in " << told;
}

// For whatever the library wrote, a log above all, that a test does away with before its directory goes: it
// is searched first. A file that is not there is none to do away with.
inline void SearchAndRemove(const std::string& path) {
    ExpectNoSecretIn(path);
    std::error_code missing;
    std::filesystem::remove(path, missing);
}
inline void SearchAndEmpty(const std::string& path) {
    ExpectNoSecretIn(path);
    std::error_code missing;
    std::filesystem::resize_file(path, 0, missing);
}

// A fresh directory that goes, with all it holds, when the object does.
//
// Before it goes, its files are searched for secrets, and the test fails that let one be written; so every
// log, error file and output that a test leaves here is searched.
class TemporaryDirectory {
public:
    enum class Searched { kNo, kYes };

    explicit TemporaryDirectory(Searched searched = Searched::kYes)
        : path_(testing::TempDir() + "ckscribe.XXXXXX"), searched_(searched) {
        if (mkdtemp(path_.data()) == nullptr) std::abort();
    }
    ~TemporaryDirectory() {
        if (searched_ == Searched::kYes) ExpectNoSecretIn(path_);
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    const std::string& Path() const { return path_; }
    std::string File(const std::string& name) const { return path_ + "/" + name; }

private:
    std::string path_;
    Searched searched_;
};
