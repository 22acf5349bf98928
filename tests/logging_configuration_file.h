#pragma once

#include <cstdlib>
#include <fstream>
#include <string>

#include "config/process_configuration.h"
#include "tests/file_text.h"
#include "tests/temporary_directory.h"

// A LoggingConfigurationFile is a configuration file in a directory of the test's own. The configuration
// object of the process finds it, as does every configuration object that is made while this one lives.
class LoggingConfigurationFile {
public:
    LoggingConfigurationFile() {
        setenv("WendrafilConfigurationPath", directory.Path().c_str(), 1);
        configuration.InitializeConfFileName();
    }
    ~LoggingConfigurationFile() { unsetenv("WendrafilConfigurationPath"); }

    // Makes the section "CkLog2" hold these lines, for example "NewFormat = 1;".
    void Write(const std::string& lines) {
        std::ofstream(directory.File("Wendrafil.conf"), std::ios::binary) << "CkLog2 = {\n" << lines << "}\n";
    }

    std::string Text() const { return FileText(directory.File("Wendrafil.conf")); }

    TemporaryDirectory directory;
};
