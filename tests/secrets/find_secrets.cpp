// find_secrets PATH...: searches files, and all files below directories, for planted secrets, and tells of
// each file with one. Its status is 1 when there is any, 2 when it is called without a path or with one where
// nothing is.
#include <cstdio>

#include "tests/secrets/secret_search.h"

int main(int count, char** arguments) {
    int status = count < 2 ? 2 : 0;
    for (int i = 1; i < count; ++i) {
        if (!std::filesystem::exists(arguments[i])) {
            std::fprintf(stderr, "find_secrets: there is no %s\n", arguments[i]);
            return 2;
        }
        for (const std::string& told : FilesWithSecrets(arguments[i])) {
            std::printf("a secret in %s\n", told.c_str());
            status = 1;
        }
    }
    return status;
}
