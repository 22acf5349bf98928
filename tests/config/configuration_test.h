#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "config/wendrafil_configuration.h"
#include "tests/file_text.h"
#include "tests/temporary_directory.h"

// A TestStore is the store over a file of the test's own.
class TestStore : public WendrafilConfiguration {
public:
    explicit TestStore(const std::string& path) : ownPath(path) {}
    const char* GetConfFileName() const override { return ownPath.c_str(); }

private:
    std::string ownPath;
};

class ConfigurationTest : public testing::Test {
protected:
    ~ConfigurationTest() override {
        WendrafilConfiguration::SetLibraryType(0);
        WendrafilConfiguration::SetServerSection("OrmaSA Server");
    }

    void Write(const std::string& text) { std::ofstream(path, std::ios::binary) << text; }

    std::string Text() const { return FileText(path); }

    // Looks a key up with a buffer of 64 characters; a key that is not found gives "(none)".
    std::string Lookup(const std::string& section, const std::string& key) const {
        char value[64] = "untouched";
        const int result = store.GetConfigurationInfo(section.c_str(), key.c_str(), value, sizeof value);
        if (result == 1) return value;
        EXPECT_EQ(0, result);
        EXPECT_STREQ("untouched", value);
        return "(none)";
    }

    TemporaryDirectory directory;
    std::string path = directory.File("Wendrafil.conf");
    TestStore store{path};
};

// Returns a configuration file with one section and one entry.
inline std::string OneEntry(const std::string& section, const std::string& key, const std::string& value) {
    return section + " = {\n   " + key + " = " + value + ";\n}\n";
}
