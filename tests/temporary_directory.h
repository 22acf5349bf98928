#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <string>

// A fresh directory that goes, with all it holds, when the object does.
class TemporaryDirectory {
public:
    TemporaryDirectory() : path_(testing::TempDir() + "ckscribe.XXXXXX") {
        if (mkdtemp(path_.data()) == nullptr) std::abort();
    }
    ~TemporaryDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    const std::string& Path() const { return path_; }
    std::string File(const std::string& name) const { return path_ + "/" + name; }

private:
    std::string path_;
};
