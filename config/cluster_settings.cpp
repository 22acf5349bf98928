// Reads and edits clusters of servers. Each has a section, "Cluster01" and so forth, up to the first one
// without a "ClusterName".

#include <sys/stat.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "config/wendrafil_configuration.h"
#include "util/shell_word.h"

namespace {

using Store = WendrafilConfiguration;

constexpr int kFirstCluster = 1;
constexpr int kNameSize = 40;

ckscribe::NumberedName ClusterSection(int number) { return {"Cluster%02d", number}; }

bool ReadName(const Store& store, int number, char* name, int size) {
    return store.GetConfigurationInfo(ClusterSection(number), "ClusterName", name, size);
}

// Returns the number of the cluster called `name`, or 0.
int FindCluster(const Store& store, const char* name) {
    char entry[kNameSize];
    for (int number = kFirstCluster; ReadName(store, number, entry, sizeof entry); ++number) {
        if (std::strcmp(entry, name) == 0) return number;
    }
    return 0;
}

// Returns the first number whose cluster is missing or has an empty name.
int FreeCluster(const Store& store) {
    int number = kFirstCluster;
    char entry[kNameSize];
    while (ReadName(store, number, entry, sizeof entry) && entry[0] != '\0') ++number;
    return number;
}

// Describes how the command line shows one of the two times of a cluster.
struct ClusterTime {
    const char* key;
    const char* label;
    const char* allClusters;  // an argument that begins with this asks for every cluster
    const char* title;
};

constexpr ClusterTime kReceiveTimeout = {"ClusterReceiveTimeout", "Receive Timeout", "ALLCLUSTERTIMEOUTS",
                                         "Printing all cluster receive timeouts:"};
constexpr ClusterTime kRecoverInterval = {"ClusterRecoverInterval", "Recovery Interval",
                                          "ALLCLUSTERINTERVALS", "Printing all cluster recovery intervals:"};

void PrintTime(const Store& store, const ClusterTime& time, int number, const char* name) {
    char value[5];
    const bool isSet = store.GetConfigurationInfo(ClusterSection(number), time.key, value, sizeof value) &&
                       std::strncmp(value, "##", 2) != 0;
    std::printf("Cluster name:%s. \t%s:%s.\n", name, time.label, isSet ? value : "None Set");
}

void PrintAllTimes(const Store& store, const ClusterTime& time) {
    std::printf("%s\n========================================\n", time.title);
    char name[kNameSize];
    for (int number = kFirstCluster; ReadName(store, number, name, sizeof name); ++number) {
        if (name[0] != '\0') PrintTime(store, time, number, name);
    }
}

int PrintTimes(const Store& store, const ClusterTime& time, const char* cluster) {
    if (std::strncmp(cluster, time.allClusters, std::strlen(time.allClusters)) == 0) {
        PrintAllTimes(store, time);
        return 1;
    }
    const int number = cluster[0] != '\0' ? FindCluster(store, cluster) : 0;
    if (number == 0) {
        std::puts("Cluster entry not found.");
        return -1;
    }
    PrintTime(store, time, number, cluster);
    return 1;
}

int SetTime(Store* store, const ClusterTime& time, const char* cluster, int value) {
    const int number = FindCluster(*store, cluster);
    if (number == 0) {
        std::puts("Cluster entry not found.");
        return -1;
    }
    return store->SetConfigurationInfo(ClusterSection(number), time.key, ckscribe::NumberedName("%d", value));
}

void DeleteFile(const char* path) {
    struct stat status;
    if (stat(path, &status) != 0) {
        std::printf("The file %s doesn't exist...\n", path);
        return;
    }
    char command[8192] = "rm --force ";
    const std::size_t length = std::strlen(command);
    if (!ckscribe::ShellWordFromPath(path, command + length, sizeof command - length)) return;
    [[maybe_unused]] const int result = std::system(command);
}

}  // namespace

int WendrafilConfiguration::GetClusterMemberFile(const char* name, char* out) const {
    // COMPAT: the search ends before the third cluster.
    for (int number = kFirstCluster; number < 3; ++number) {
        char entry[1024];
        if (!ReadName(*this, number, entry, sizeof entry) || std::strcmp(entry, name) != 0) continue;
        out[0] = '\0';
        Text(ClusterSection(number), "ClusterMemberFile", out, 1024);
        return 1;
    }
    return 0;
}

int WendrafilConfiguration::GetListOfClusters(int& count, char** names) const {
    count = 0;
    char name[50];
    int number = kFirstCluster;
    for (; ReadName(*this, number, name, sizeof name); ++number) {
        if (name[0] != '\0') std::strcpy(names[count++], name);
    }
    if (count > 0) return 1;
    if (number > kFirstCluster) return 0;
    char certificate[1024];
    return GetClientCertFile(certificate, sizeof certificate) ? 3 : 2;
}

int WendrafilConfiguration::GetOrmaNetClusterReceiveTimeout(int&, char** args) const {
    return PrintTimes(*this, kReceiveTimeout, args[1]);
}

int WendrafilConfiguration::GetOrmaNetClusterRecoverInterval(int&, char** args) const {
    return PrintTimes(*this, kRecoverInterval, args[1]);
}

int WendrafilConfiguration::SetOrmaNetClusterReceiveTimeout(const char* name, int milliseconds) {
    return SetTime(this, kReceiveTimeout, name, milliseconds);
}

int WendrafilConfiguration::SetOrmaNetClusterRecoverInterval(const char* name, int seconds) {
    return SetTime(this, kRecoverInterval, name, seconds);
}

int WendrafilConfiguration::SetOrmaNetClusterName(const char* name, const char* memberFile) {
    if (FindCluster(*this, name) != 0) return 2;
    const ckscribe::NumberedName section = ClusterSection(FreeCluster(*this));
    if (memberFile != nullptr && memberFile[0] != '\0') Set(section, "ClusterMemberFile", memberFile);
    return Set(section, "ClusterName", name);
}

int WendrafilConfiguration::DeleteOrmaNetClusterPair(const char* name) {
    const int number = FindCluster(*this, name);
    if (number == 0) {
        std::printf("The requested cluster: %s doesn't exist in the Velmora-INC configuration file.\n", name);
        return 1;
    }
    const ckscribe::NumberedName section = ClusterSection(number);
    char memberFile[80] = "";
    Text(section, "ClusterMemberFile", memberFile, sizeof memberFile);
    Set(section, "ClusterName", "");
    Set(section, "ClusterMemberFile", "");

    char directory[1024];
    if (!GetClientCertFile(directory, sizeof directory)) {
        std::puts("Unable to access the Velmora-INC configuration file.");
        return 0;
    }
    StripOffFileName(directory);
    const int parent = std::max(0, static_cast<int>(std::strlen(directory) - std::strlen("cert/client/")));
    char certificate[1200];
    std::snprintf(certificate, sizeof certificate, "%.*scert/server/%sCert.pem", parent, directory, name);
    DeleteFile(memberFile);
    DeleteFile(certificate);
    return 1;
}
