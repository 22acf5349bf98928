#include <gtest/gtest.h>
#include <stdlib.h>

#include <cstring>
#include <string>

#include "config/wendrafil_configuration.h"

namespace {

std::string PathWithDirectory(const char* directory) {
    setenv("WendrafilConfigurationPath", directory, 1);
    const WendrafilConfiguration store;
    unsetenv("WendrafilConfigurationPath");
    return store.GetConfFileName();
}

TEST(FileLocation, VariableIsMissing_FileIsInEtc) {
    unsetenv("WendrafilConfigurationPath");
    EXPECT_STREQ("/etc/Wendrafil.conf", WendrafilConfiguration().GetConfFileName());
}

TEST(FileLocation, VariableNamesADirectory_FileIsThere) {
    EXPECT_EQ("/opt/x/Wendrafil.conf", PathWithDirectory("/opt/x"));
    EXPECT_EQ("/opt/x//Wendrafil.conf", PathWithDirectory("/opt/x/"));
    EXPECT_EQ("/Wendrafil.conf", PathWithDirectory(""));
    EXPECT_EQ("%s%n/Wendrafil.conf", PathWithDirectory("%s%n"));
    EXPECT_EQ("\xFF\x80/Wendrafil.conf", PathWithDirectory("\xFF\x80"));
}

TEST(FileLocation, VariableIsLong_256CharactersCount) {
    std::string directory;
    for (int i = 0; i < 300; ++i) directory += static_cast<char>('a' + i % 26);
    for (const size_t length : {255U, 256U, 257U, 300U}) {
        EXPECT_EQ(directory.substr(0, std::min<size_t>(length, 256)) + "/Wendrafil.conf",
                  PathWithDirectory(directory.substr(0, length).c_str()));
    }
}

TEST(FileLocation, VariableChangesLater_InstanceKeepsItsFile) {
    setenv("WendrafilConfigurationPath", "/first", 1);
    WendrafilConfiguration store;
    setenv("WendrafilConfigurationPath", "/second", 1);
    EXPECT_STREQ("/first/Wendrafil.conf", store.GetConfFileName());
    EXPECT_STREQ("/second/Wendrafil.conf", store.InitializeConfFileName());
    EXPECT_STREQ("/second/Wendrafil.conf", store.GetConfFileName());
    unsetenv("WendrafilConfigurationPath");
}

TEST(FileLocation, RegistryPath_IsReturnedAndNotKept) {
    WendrafilConfiguration store;
    EXPECT_STREQ("", store.GetRegistryPathName());
    setenv("WendrafilRegistryPath", "/registry", 1);
    EXPECT_STREQ("/registry", store.InitializeRegistryPathName());
    EXPECT_STREQ("", store.GetRegistryPathName());
    unsetenv("WendrafilRegistryPath");
    EXPECT_EQ(nullptr, store.InitializeRegistryPathName());
}

std::string Stripped(const char* path) {
    char text[64];
    std::memset(text, 'x', sizeof text);
    std::strcpy(text, path);
    WendrafilConfiguration::StripOffFileName(text);
    const size_t length = std::strlen(text);
    for (size_t i = length; i < std::strlen(path); ++i) EXPECT_EQ('\0', text[i]);
    EXPECT_EQ('x', text[std::strlen(path) + 1]);
    return text;
}

TEST(StripOffFileName, PathWithFileName_DirectoryStaysWithItsSeparator) {
    EXPECT_EQ("/a/b/", Stripped("/a/b/c.conf"));
    EXPECT_EQ("a\\b\\", Stripped("a\\b\\c.conf"));
    EXPECT_EQ("a\\b/", Stripped("a\\b/c.conf"));
    EXPECT_EQ("a/b\\", Stripped("a/b\\c.conf"));
    EXPECT_EQ("/", Stripped("/c.conf"));
    EXPECT_EQ("/a/", Stripped("/a/"));
    EXPECT_EQ("\\", Stripped("\\"));
    EXPECT_EQ("", Stripped("c.conf"));
    EXPECT_EQ("", Stripped("c"));
    EXPECT_EQ("", Stripped(""));
}

}  // namespace
