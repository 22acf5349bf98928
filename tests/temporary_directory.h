#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <string>

#include "tests/secrets/secret_search.h"
#include "tests/unwatched.h"

// Fails the test if a secret was written into a file, or into a file below a directory.
inline void ExpectNoSecretIn(const std::string& place) {
    const Unwatched searching;
    for (const std::string& told : FilesWithSecrets(place)) ADD_FAILURE() << "a secret in " << told;
}

// A test calls these if it removes or empties a file of the library, above all a log, before its directory
// goes. They search the file for secrets first. The file need not exist.
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

// A TemporaryDirectory makes a fresh directory, and removes it with all that it holds when the object goes.
//
// Before that, its files are searched for secrets, and the test fails if one was written. Therefore every
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
