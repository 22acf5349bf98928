// find_secrets PATH... searches files, and all files below directories, for planted secrets. It names each
// file that has one. Its status is 1 if a file has one, and 2 if it is called without a path or with a path
// that does not exist.
#include <cstdio>

#include "tests/secrets/secret_search.h"

int main(int count, char** arguments) {
    int status = count < 2 ? 2 : 0;
    for (int i = 1; i < count; ++i) {
        if (!std::filesystem::exists(arguments[i])) {
            std::fprintf(stderr, "find_secrets: there is no %s\n", arguments[i]);
            return 2;
        }
        for (const std::string& found : FilesWithSecrets(arguments[i])) {
            std::printf("a secret in %s\n", found.c_str());
            status = 1;
        }
    }
    return status;
}
