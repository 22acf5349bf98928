#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <string>

#include "tests/secrets/secret_search.h"

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
        if (searched_ == Searched::kYes) {
            for (const std::string& told : FilesWithSecrets(path_)) ADD_FAILURE() << "a secret in " << told;
        }
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
