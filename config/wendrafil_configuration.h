#pragma once

// The configuration store finds the vendor's configuration file, reads its settings and edits them.
//
// An instance holds the file's path and five result buffers. It holds neither an open file nor its text:
// every lookup reads the whole file again, and a change that another program makes counts at once. No
// function throws or prints unless its comment says so. A function returns 1 for success or "found", and 0
// for failure or "not found", unless its comment says otherwise. A lookup that finds nothing leaves the
// caller's buffer unchanged. A value that does not fit is cut without notice.
//
// Sizes of buffers are in bytes and count the terminating NUL. Numbers of characters do not count it. A
// pointer that an accessor returns points into the instance and is valid until that accessor is called again.
//
// Threads: lookups into the caller's own buffers may run at the same time, on one instance too. The caller
// serialises accessors that return a pointer. The caller also serialises everything that edits, across
// processes too.
//
// The word "COMPAT:" begins the comment of something odd that stays because readers of configurations depend
// on it.

#include <atomic>
#include <cstdio>

#include "config/numbered_name.h"

class WendrafilConfiguration {
public:
    WendrafilConfiguration();
    virtual ~WendrafilConfiguration();

    // Returns the path of the configuration file. Every operation on the file asks this function for it: a
    // derived class can point the whole store at another file.
    virtual const char* GetConfFileName() const;

    WendrafilConfiguration(const WendrafilConfiguration&) = delete;
    WendrafilConfiguration& operator=(const WendrafilConfiguration&) = delete;

    // ---- Places and kinds of store ----

    // Stores and returns the file's path. The file is "Wendrafil.conf" in the directory that the environment
    // variable "WendrafilConfigurationPath" names (its first 256 characters), else in "/etc". The constructor
    // calls this function.
    const char* InitializeConfFileName();

    // Empties the registry path and returns the environment variable "WendrafilRegistryPath", which may be
    // null.
    const char* InitializeRegistryPathName();
    const char* GetRegistryPathName() const { return registryPathName; }

    // Cuts a path back to its directory, in place. "/" and "\" separate, and the last of them stays.
    static void StripOffFileName(char* path);

    // These set and return the kind of store, for all instances. 0 is the file, the only kind that works. 1
    // is the registry, which finds and stores nothing. Any other value means that there is no store.
    static void SetLibraryType(int type) { LibraryType.store(type, std::memory_order_relaxed); }
    static int GetLibraryType() { return LibraryType.load(std::memory_order_relaxed); }

    // These copy and set the name of the section with the network server's settings, for all instances. The
    // name is "OrmaSA Server" at first. GetServerSection returns 0 for a null buffer or if `size` is below
    // the name's length. COMPAT: if `size` equals that length, the copy lacks the last character.
    // SetServerSection keeps 63 characters of the name, and returns 0 for null. It must not run while another
    // thread uses the section.
    static int GetServerSection(char* buffer, unsigned int size);
    static int SetServerSection(const char* name);

    static const char* GetLBLibSectionName() { return "LBLib2"; }
    static const char* GetSessionSectionName() { return "Session"; }
    static int IsSTCEnabled() { return 1; }

    // TestR returns 1 if the file can be opened for reading, TestRW if it can be opened for reading and
    // writing; else 0. With another kind of store both return 1.
    int TestR() const;
    int TestRW() const;

    // ---- Reading the file ----

    // Reads a whole file and returns 1. `*contents` receives a new array with a NUL after the text; the
    // caller deletes it with delete[]. `*size` receives the file's size in bytes. Returns 0 for null
    // arguments. Returns 0 and sets `*contents` to null for a file that cannot be opened or asked for its
    // size, for an empty file, and if there is no memory. COMPAT: a failed or short read is not reported; the
    // text ends early.
    int ReadConfigurationFile(const char* path, char** contents, unsigned long* size) const;

    // Writes the text of the configuration file to `stream`. Returns 0 if the file cannot be read, else 1.
    int DumpFile(FILE* stream) const;

    // Looks a key up as config/entry_lookup.h describes and copies its value, cut to `valueSize` - 1
    // characters. Returns 1 if the key is found, else 0. Returns 0 for null arguments. `valueSize` is taken
    // as unsigned; if it is 0, nothing is copied.
    int GetConfigurationEntry(const char* section, const char* key, char* value, int valueSize) const;

    // Does the same if the store is the file; else returns 0.
    int GetConfigurationInfo(const char* section, const char* key, char* value, int valueSize) const;

    // Does the same in the current kind of store.
    int GetEntry(const char* section, const char* key, char* value, unsigned long valueSize) const;

    // The registry store exists in name only. These find and store nothing and return 0.
    int GetRegistryEntry(const char*, const char*, char*, unsigned long) const { return 0; }
    int SetRegistryEntry(const char*, const char*, const char*, unsigned short) { return 0; }

    // ---- Changing the file ----

    // Each function rewrites the whole file in place and returns 1. COMPAT: lines are cut at 838 characters
    // and end with a line feed. A function returns 0 and leaves the file untouched for null arguments, and if
    // the store is not the file. It does the same if the file cannot be read whole, or cannot be opened for
    // writing. It also returns 0 if a line to write has 840 characters or more with its line feed: the old
    // line is gone then, and the rest is written. Errors in writing are not reported.
    //
    // COMPAT: a section begins at a line that contains its name anywhere, and ends at the next line that
    // contains "}". An edit therefore also changes sections whose names contain this one, and places where a
    // value mentions it. A section that no "}" closes gets no new key.

    // Sets a key. An entry of that name becomes "   key = value;". COMPAT: so does an entry whose longer name
    // ends with it. A missing entry is inserted before the section's "}". A missing section is appended to
    // the file. Here the line that begins a section must contain "{", too.
    int SetConfigurationInfo(const char* section, const char* key, const char* value);
    int SetEntry(const char* section, const char* key, const char* value, unsigned short reserved = 0);

    // Drops every line of a section that contains the key anywhere.
    int ClearConfigurationInfo(const char* section, const char* key);
    int ClearEntry(const char* section, const char* key, unsigned short = 0) {
        return ClearConfigurationInfo(section, key);
    }

    // Drops a whole section.
    int ClearConfigurationInfo(const char* section);
    int ClearSection(const char* section, unsigned short = 0) { return ClearConfigurationInfo(section); }

    // Replaces all lines of a section by `body`, which is broken into lines after every 512 characters. A
    // missing section is appended to the file. The last argument is not used.
    int ReplaceConfigurationInfo(const char* section, const char* body, int reserved);

    // ---- Settings ----
    //
    // Each setting has one accessor, and its editor stands beside it. The body of an accessor shows its
    // section, its key, the size of the buffer into which a number is read, and its result if the key is
    // missing:
    //
    //   Number(section, key, size, missing)    returns the number as atoi reads it: "12abc" is 12, "abc" is 0
    //   Text(section, key, buffer, size)       copies the value into the caller's buffer; 1 if found, else 0
    //   Scanned(section, key, int*)            stores the number and returns 1; without one, only returns 0
    //   ServerNumber, ServerText, ServerScanned
    //                                          do the same in the server section, then in "OrmaSA Server"
    //   Set(section, key, text or number)      works as SetConfigurationInfo; 1 for success, else 0
    //
    // The store converts no unit: a number has the unit in which the vendor's software reads its key. A unit
    // stands here only where the store itself depends on it. Switches return the number, and 0 means off. The
    // comments of accessors without a body state their rules. Names of keys and sections hold indices and
    // cluster numbers with at least two digits. `proxy` and `server` choose the first of two sections. A null
    // buffer counts as "not found".

    // These read the paths of the target libraries. The first copies "LibUNIX64" of a section and returns 1;
    // if the key is missing, it copies "/usr/lib/libmordavek2.so" and returns 0. The second returns the same
    // for section "Wendrafil2". The third returns "LibUNIX" of "LBLib2", the load-balancing library, and has
    // the same default.
    int LibraryFileName(const char* section, char* buffer, int size) const;
    const char* LibraryFileName();
    const char* LBLibLibraryFileName();
    int GetFunctionBindLevel() const { return Number("Misc", "FunctionBindLevel", 8, 0); }
    int IsLoadBalancingEnabled() const { return Number("LBLib2", "Enabled", 200, 0); }
    int ClientTokenLibraryFileName(char* buffer, int size) const {
        return Text("Secure Trusted Channel", "ClientTokenLib", buffer, size);
    }
    int GetOrmaAuxLibraryCount() const { return Number("AuxLibrary", "AuxLibCount", 32, 0); }
    int GetOrmaAuxLibrary(char* buffer, int size, int index) const {
        return Text("AuxLibrary", ckscribe::NumberedName("AuxLib%d", index), buffer, size);
    }
    int GetOrmaAuxLibraryType(int index) const {
        return Number("AuxLibrary", ckscribe::NumberedName("AuxLibType%d", index), 32, 0);
    }
    int GetSmmLibraryFilename(char* buffer, int size) const {
        return Text("SSM", "LibraryFilename", buffer, size);
    }
    int GetSmmStorageFilename(char* buffer, int size) const {
        return Text("SSM", "StorageFilename", buffer, size);
    }
    int GetSmmIsEnabled() const { return Number("SSM", "Enabled", 64, 0); }
    int GetOrmaCPModule(const char* section, char* buffer, int size) const {
        return Text(section, "CmdProcessor", buffer, size);
    }
    int GetServerDaemonName(const char* section, char* buffer, int size) const {
        return Text(section, "DaemonName", buffer, size);
    }

    // These control how the client library behaves.
    int IsPre1863RSAKeyGenRemapEnabled() const { return Number("Misc", "RSAPre1863KeyGenMechRemap", 200, 0); }
    int IsRSANonFIPSKeyGenRemapEnabled() const { return Number("Misc", "RSAKeyGenMechRemap", 200, 0); }
    int UseQuorvanthBranding() const { return Number("Misc", "UseQuorvanthBranding", 200, 0); }
    int IsPE1746Enabled() const { return Number("Misc", "PE1746Enabled", 200, 1); }
    int IsUseFW4Activation() const { return Number("Misc", "UseFW4Activation", 200, 1); }
    int GetSignVerifyAccumulatorSize() const { return Number("Misc", "SignVerifyAccumulatorSize", 80, -1); }
    int UseIncorrectChar2ParameterEncoding() const {
        return Number("Misc", "UseIncorrectChar2ParameterEncoding", 200, 0);
    }
    int IsApache() const { return Number("Misc", "Apache", 200, 0); }
    int IsClearUserZeroizeAllowed() const { return Number("Misc", "ClearUserZeroizeAllowed", 200, 0); }
    int GetGcmDecCompatibilityMode() const { return Number("Misc", "GcmDecCompatibility", 80, 0); }
    int GetGcmEncCompatibilityMode() const { return Number("Misc", "GcmEncCompatibility", 80, 0); }
    int GetNetscapeKludgeSetting() const { return Number("Misc", "NetscapeCustomize", 80, 0); }
    int RemoveCASTfive() const { return Number("Misc", "DisableCAST5", 200, 0); }
    int IsOrmaRSS() const { return Number("Misc", "OrmaRSS", 200, 0); }
    int IsArgusDriverUsed() const { return Number("Misc", "ArgusDriver", 200, 0); }
    int IsSignalHandlerEnabled() const { return Number("Session", "SignalHandlerEnabled", 200, 0); }
    int IsAutoCleanUpDisabled() const { return Number("Session", "AutoCleanUpDisabled", 200, 0); }
    bool IsOneBaseSlotId() const { return Number("Presentation", "OneBaseSlotId", 200, 0) != 0; }

    // Returns whether "AllowPTK" of "Misc" begins with "1".
    bool GetAllowPTK() const;

    // Returns whether "KeysInHW" of "Misc" is "YES", in capitals or not.
    bool IsKeyInHW() const;

    // Copies "CryptokiContainerName" of "Misc", at most 99 characters; `buffer` has room for 100 bytes.
    // Returns 1 if found, else 0.
    int GetCryptokiContainerName(char* buffer) const {
        return Text("Misc", "CryptokiContainerName", buffer, 100);
    }

    // Stores "AppIdMajor" and "AppIdMinor" of "Misc", hexadecimal after "0x", else decimal. A missing major
    // number is 0. COMPAT: a missing minor number repeats the major one. Returns 1 if either is found, else
    // 0.
    int ExplicitAppId(unsigned long& major, unsigned long& minor) const;

    // Returns the path of the enabler's log file, "LogFile" of "Misc", or an empty text if the key is
    // missing.
    const char* EnablerLogFileName();
    int SetEnablerLogFileName(const char* path) { return Set("Misc", "LogFile", path); }

    // These serve products that manage certificates.
    int IsEntrustMgr() const { return Number("Misc", "EntrustMgr4", 200, 0); }
    int IsUseEntrustDatabase() const { return Number("Misc", "EntrustSoftwareKeyStorage", 200, 0); }
    int IsEntrust3_0Used() const { return Number("Misc", "Entrust3_0", 200, 0); }
    int IsEntrustSWInstall() const { return Number("Misc", "EntrustSWInstall", 200, 0); }
    int SetEntrustSWInstall(int value) { return Set("Misc", "EntrustSWInstall", value); }

    // Copies "TokenInitString" of "Misc" into `buffer`, which has room for 100 bytes. Returns the number of
    // characters copied, at most 99, and 0 for a missing key or a null buffer.
    int GetEntrustCAPasswd(char* buffer) const;

    // These control commands to the device: their time-outs, and its slots.
    int OrmaDefaultTimeOut() const { return Number("Orma", "DefaultTimeOut", 200, 10000); }
    int OrmaCommandTimeOutKeyPairGenValue() const { return Number("Orma", "KeypairGenTimeOut", 200, 0); }
    int OrmaCommandTimeOutFirmwareUpdate() const {
        return Number("Orma", "FirmwareUpdateCommandTimeOut", 200, 0);
    }
    int OrmaCommandTimeOutCloning() const { return Number("Orma", "CloningCommandTimeOut", 200, 0); }
    int OrmaCommandTimeOutPedSet() const { return Number("Orma", "CommandTimeOutPedSet", 200, 0); }
    int RSAGenSleepValue() const { return Number("Orma", "RSAGenSleepValue", 200, 0); }
    int OrmaSlotCount() const { return Number("Orma", "SlotCount", 200, 0); }
    int IsBufferedCommandSet() const { return Number("Orma", "BufferedCommand", 200, 0); }

    // These describe card readers.
    int CardReaderDurnelCount() const { return Number("CardReader", "DurnelCount", 200, 0); }
    int IsRemoteCommandPreferred() const { return Number("CardReader", "RemoteCommand", 200, 0); }
    int GetCardReaderDurnelName(int index, char* buffer, int size) const {
        return Text("CardReader", ckscribe::NumberedName("Durnel%dName", index), buffer, size);
    }

    // Stores "InstanceOrmaCR" of "CardReader", as atoi reads its first 31 characters, and returns 1. A
    // missing key does not change `*out` and returns 0.
    int InstanceOrmaCR(int* out) const;

    // These control the network client.
    int IsClient() const { return Number("OrmaSA Client", "NetClient", 200, 0); }
    int GetOrmaNetSendTimeout() const { return Number("OrmaSA Client", "SendTimeout", 200, 10000); }
    int GetOrmaNetReceiveTimeout() const { return Number("OrmaSA Client", "ReceiveTimeout", 200, 20000); }
    int GetClientTCPKeepAlive() const { return Number("OrmaSA Client", "TCPKeepAlive", 32, 0); }
    int GetClientKeepAlive() const { return Number("OrmaSA Client", "ClientKeepAlive", 32, 0); }
    int GetOrmaClientHtlDir(char* buffer, int size) const {
        return Text("OrmaSA Client", "HtlDir", buffer, size);
    }
    int GetSSLConfigFile(char* buffer, int size) const {
        return Text("OrmaSA Client", "SSLConfigFile", buffer, size);
    }
    int GetServerCAFile(char* buffer, int size) const {
        return Text("OrmaSA Client", "ServerCAFile", buffer, size);
    }
    int GetClientPrivKeyFile(char* buffer, int size) const {
        return Text("OrmaSA Client", "ClientPrivKeyFile", buffer, size);
    }
    int SetClientPrivKeyFile(const char* path) { return Set("OrmaSA Client", "ClientPrivKeyFile", path); }
    int DeleteClientPrivKeyFile() { return Set("OrmaSA Client", "ClientPrivKeyFile", ""); }
    int GetClientCertFile(char* buffer, int size) const {
        return Text("OrmaSA Client", "ClientCertFile", buffer, size);
    }
    int SetClientCertFile(const char* path) { return Set("OrmaSA Client", "ClientCertFile", path); }
    int DeleteClientCertFile() { return Set("OrmaSA Client", "ClientCertFile", ""); }

    // These control the network server.
    int IsServer() const { return ServerNumber("NetServer", 200, 0); }
    int RequiredClientAuth() const { return ServerNumber("ClientAuth", 200, 0); }
    int IsServerKeyEncrypted() const { return ServerNumber("EncryptedKey", 200, 0); }
    int GetNTLSTCPKeepAlive() const { return Number("OrmaSA Server", "TCPKeepAlive", 32, 0); }
    int GetOrmaDPTCPKeepAliveProbes(int* value) const { return ServerScanned("TCP_KEEPCNT", value); }
    int GetOrmaDPTCPKeepAliveInterval(int* value) const { return ServerScanned("TCP_KEEPINTVL", value); }
    int GetOrmaDPTCPKeepAliveIdle(int* value) const { return ServerScanned("TCP_KEEPIDLE", value); }
    int GetOrmaDPWorkerThreads(int* value) const { return ServerScanned("DPWorkerThreads", value); }
    int GetOrmaCmdWorkerThreads(int* value) const { return ServerScanned("CmdWorkerThreads", value); }
    int GetOrmaNetHostPort(int* port, const char* section) const {
        return Scanned(section, "HostPort", port);
    }
    int GetClientAuthFile(char* buffer, int size) const { return ServerText("ClientAuthFile", buffer, size); }
    int GetOrmaNetHostName(char* buffer, int size) const { return ServerText("HostName", buffer, size); }
    int SetOrmaNetHostName(const char* name) { return Set("OrmaSA Server", "HostName", name); }
    int GetServerPrivKeyFile(char* buffer, int size) const {
        return ServerText("ServerPrivKeyFile", buffer, size);
    }
    int SetServerPrivKeyFile(const char* path) { return Set("OrmaSA Server", "ServerPrivKeyFile", path); }
    int GetServerCertFile(char* buffer, int size) const { return ServerText("ServerCertFile", buffer, size); }
    int SetServerCertFile(const char* path) { return Set("OrmaSA Server", "ServerCertFile", path); }
    int GetClientCAFile(char* buffer, int size) const { return ServerText("ClientCAFile", buffer, size); }

    // Writes to the server section. Writes to "OrmaSA Server" only if that fails. Returns 1 if either
    // succeeds.
    int SetClientCAFile(const char* path) {
        return Set(server_section, "ClientCAFile", path) || Set("OrmaSA Server", "ClientCAFile", path);
    }

    // Returns "AttackTimeout" of the server section, else of "OrmaSA Server": at most 20, and 10 if the key
    // is missing or 0.
    int GetAttackTimeout() const;

    // Returns "NTLSThreads" of the server section, else of "OrmaSA Server": a number of threads, and 1 if the
    // key is missing or 0.
    int GetServerThreadCount() const;

    // Sets `check` to false if "SRC_IP_CHK" of "OrmaSA Server" begins with "disable", else to true. Returns 1
    // if the key is found, else 0.
    int GetSourceIPChecking(bool& check) const;

    // The list of servers stands in "OrmaSA Server" or "OrmaSA Client". It begins at index 0 and ends before
    // the first missing name.
    int GetOrmaNetServerName(int index, char* buffer, int size, bool server) const {
        return Text(NetSection(server), ckscribe::NumberedName("ServerName%02d", index), buffer, size);
    }
    int GetOrmaNetServerPort(int index, int* port, bool server) const {
        return Scanned(NetSection(server), ckscribe::NumberedName("ServerPort%02d", index), port);
    }
    int SetOrmaNetServerPort(int index, int port) {
        return Set("OrmaSA Client", ckscribe::NumberedName("ServerPort%02d", index), port);
    }
    int GetOrmaNetServerHtlRequired(int index, int* value, bool server) const {
        return Scanned(NetSection(server), ckscribe::NumberedName("ServerHtl%02d", index), value);
    }
    int GetOrmaNetCertFile(int index, char* buffer, int size) const {
        return Text("OrmaSA Client", ckscribe::NumberedName("ServerCertFile%02d", index), buffer, size);
    }

    // Counts the names, and copies each (at most 49 characters) into its element of `names` unless the array
    // or the element is null. An element has room for 50 bytes. Returns 1 if there are any names, else 0.
    int GetListOfServers(int& count, char** names, bool server) const;

    // Adds a name to the list, in the first place whose name is empty or missing. Returns 1 or 0. Returns 2
    // and writes nothing if the list holds the name already.
    int SetOrmaNetServerName(const char* name, bool server);

    // Renames the server that is called `oldName`. Returns 1 or 0, and -1 if there is no such server. The
    // index is not used: the name identifies the server.
    int ReplaceOrmaNetServerName(const char* oldName, const char* newName, int index, bool server);

    // Empties a server's name, port and HTL entries in this order, up to the first failure. Their places
    // stay. Returns 1 or 0, and 3 if the list does not hold the name.
    int DeleteOrmaNetServerPair(const char* name, bool server);

    // Writes the port to the first index whose "ServerPort%02d" is empty or missing. Returns 1 or 0.
    int SetServerPort(const int* port, bool server);

    // Writes "1" if `required` is 1, else "0". Returns 1 or 0. A negative index stands for the first one
    // whose "ServerHtl%02d" is empty or missing.
    int SetServerHtlRequired(int required, bool server, int index);

    // Clusters are sections "Cluster01", "Cluster02" and so forth, up to the first one without a
    // "ClusterName". COMPAT: only GetClusterMemberFile finds a name of more than 39 characters.

    // Copies the "ClusterMemberFile" (at most 1023 characters, empty if missing) of the cluster called
    // `name`. `out` has room for 1024 bytes. Returns 1 if the cluster is found, else 0. COMPAT: only the
    // first two clusters are looked at.
    int GetClusterMemberFile(const char* name, char* out) const;

    // Copies each non-empty name (at most 49 characters) to the next element of `names`. The caller supplies
    // enough elements, with room for 50 bytes each. Returns 1 if there are any, and 0 if there are clusters
    // but every name is empty. Without a cluster, returns 3 if a client certificate file is configured,
    // else 2.
    int GetListOfClusters(int& count, char** names) const;

    // These serve a command line: they print the "ClusterReceiveTimeout" in milliseconds (or the
    // "ClusterRecoverInterval" in seconds), at most 4 characters, of the cluster called args[1]. If args[1]
    // begins with "ALLCLUSTERTIMEOUTS" (or "ALLCLUSTERINTERVALS"), they print it for all named clusters.
    // `value` is not written. They return 1. If there is no such cluster, they print that and return -1.
    int GetOrmaNetClusterReceiveTimeout(int& value, char** args) const;
    int GetOrmaNetClusterRecoverInterval(int& value, char** args) const;

    // These set the two times and return 1 or 0. If there is no such cluster, they print that and return -1.
    int SetOrmaNetClusterReceiveTimeout(const char* name, int milliseconds);
    int SetOrmaNetClusterRecoverInterval(const char* name, int seconds);

    // Adds a cluster, in the first place whose name is empty or missing: writes the path of its member file,
    // unless that is empty, and then its name. Returns the result of the latter, 1 or 0. Returns 2 and writes
    // nothing if the cluster exists.
    int SetOrmaNetClusterName(const char* name, const char* memberFile);

    // Empties a cluster's name and member file entries. Deletes the member file and the cluster's server
    // certificate, which stands beside the folder of the client's. Prints on standard output which files are
    // missing. Returns 1, for an unknown cluster too, and 0 if no client certificate file is configured.
    int DeleteOrmaNetClusterPair(const char* name);

    // These control high availability.
    int IsHAOnly(bool proxy) const {
        return Number(proxy ? "ProxyConfiguration" : "HAConfiguration", "HAOnly", 200, 0);
    }
    int HAOnlyEnable() { return Set("HAConfiguration", "HAOnly", "1"); }
    int HAOnlyDisable() { return Set("HAConfiguration", "HAOnly", "0"); }
    int HADisableContainerHandleLookup() const {
        return Number("HAConfiguration", "HADisableContainerHandleLookup", 200, 0);
    }
    int GetHALogpath(char* buffer, int size) const {
        return Text("HAConfiguration", "haLogPath", buffer, size);
    }
    int SetHALogpath(const char* path) { return Set("HAConfiguration", "haLogPath", path); }
    int SetHALog(bool on) { return Set("HAConfiguration", "haLogStatus", on ? "enabled" : "disabled"); }
    int SetHAProxy(bool on) { return Set("HAConfiguration", "haProxy", on ? "enabled" : "disabled"); }
    int SetHALogfilemaxlen(int length) { return Set("HAConfiguration", "logLen", length); }
    int GetHASynchronize(const char* key) const { return Number("HASynchronize", key, 32, -1); }
    int HASynchronizeEnable(const char* key) { return Set("HASynchronize", key, "1"); }
    int HASynchronizeDisable(const char* key) { return Set("HASynchronize", key, "0"); }
    int GetHARecovery(const char* key) const { return Number("HARecovery", key, 32, 0); }

    // Writes the number that GetHARecovery returns plus 1. Returns 1 or 0.
    int UpHARecovery(const char* key);

    // These read "haLogStatus" and "haProxy" of "HAConfiguration". They set `on` to true if the value begins
    // with "enable", and to false if it begins with "#" or is missing. COMPAT: any other value leaves `on`
    // unchanged. They return 1 if the key is found, else 0.
    int GetHALog(bool& on) const { return Switch("haLogStatus", on); }
    int GetHAProxy(bool& on) const { return Switch("haProxy", on); }

    // Stores "logLen" of "HAConfiguration", as atoi reads its first 18 characters: 0 if it is missing, and
    // 262144 for a negative number or a value that begins with "#". Returns 1 if the key is found, else 0.
    int GetHALogfilemaxlen(int& length) const;

    // Stores "reconnAtt" of "HAConfiguration", a number of attempts, as atoi reads its first 4 characters; 0
    // if it is missing. Returns 1 if the key is found, else 0.
    int GetHAAutoRecoverCount(int& count) const;

    // Writes at most 5 characters of the number. Returns 1 or 0.
    int SetHAAutoRecoverCount(int count);

    // Virtual tokens stand in "VirtualProxyToken" or "VirtualToken".
    int GetVirtualTokenLabel(int index, char* buffer, int size, bool proxy) const {
        return Text(TokenSection(proxy), ckscribe::NumberedName("VirtualToken%02dLabel", index), buffer,
                    size);
    }
    int SetVirtualTokenLabel(int index, const char* label, bool proxy) {
        return Set(TokenSection(proxy), ckscribe::NumberedName("VirtualToken%02dLabel", index), label);
    }
    int GetVirtualTokenSN(int index, char* buffer, int size, bool proxy) const {
        return Text(TokenSection(proxy), ckscribe::NumberedName("VirtualToken%02dSN", index), buffer, size);
    }
    int SetVirtualTokenSN(int index, const char* serial, bool proxy) {
        return Set(TokenSection(proxy), ckscribe::NumberedName("VirtualToken%02dSN", index), serial);
    }
    int SetVirtualTokenSN(int index, unsigned int serial, bool proxy);
    int GetVirtualTokenMembers(int index, char* buffer, int size, bool proxy) const {
        return Text(TokenSection(proxy), ckscribe::NumberedName("VirtualToken%02dMembers", index), buffer,
                    size);
    }
    int GetVirtualSessionObjectDisableSyncType(int index, char* buffer, int size) const {
        return Text("VirtualProxyToken",
                    ckscribe::NumberedName("VirtualToken%02dSessionSynchsDisabled", index), buffer, size);
    }
    int SetVirtualSessionObjectDisableSyncType(int index, const char* type) {
        return Set("VirtualProxyToken",
                   ckscribe::NumberedName("VirtualToken%02dSessionSynchsDisabled", index), type);
    }
    int GetVirtualTokenObjectDisableSyncType(int index, char* buffer, int size) const {
        return Text("VirtualProxyToken", ckscribe::NumberedName("VirtualToken%02dTokenSynchsDisabled", index),
                    buffer, size);
    }
    int SetVirtualTokenObjectDisableSyncType(int index, const char* type) {
        return Set("VirtualProxyToken", ckscribe::NumberedName("VirtualToken%02dTokenSynchsDisabled", index),
                   type);
    }

    // Appends a serial number to a token's list of members, after a comma. COMPAT: the comma also follows an
    // empty list. Returns 0 if the token has no label, or if list and number have more than 840 characters
    // together; else the result of the edit.
    int AddVirtualTokenMember(int index, const char* serial, bool proxy);

    // Takes every member of that serial number off a token's list, and all spaces. Returns 0 if the list is
    // missing or empty; else the result of the edit.
    int RemoveVirtualTokenMember(int index, const char* serial, bool proxy);

    // Takes a token out of its section and rebuilds the section. Each other token below index 100 keeps its
    // label, serial number, members and the two synchronisation entries, under the same index. Returns 1.
    // Returns 0, with the file untouched, if the section holds no token at all.
    int DeleteVirtualToken(int index, bool proxy);

    // These describe PIN entry devices. COMPAT: those that store through a pointer return 0 for success and 1
    // for failure.

    // Stores "PEDTimeout1" to "PEDTimeout4" of "Orma", and 0 for each that is missing. Returns 0, and 1 if
    // any pointer is null.
    int PEDTimeout(unsigned long* t1, unsigned long* t2, unsigned long* t3, unsigned long* t4) const;

    // The first stores "HSMSlot" of "RemotePed" and returns 0. If the key is missing, it stores 0 and returns
    // 1; for null it returns 1. The second returns the slot, and 0 if the key is missing.
    int HSMSlot(unsigned int* slot) const;
    unsigned int HSMSlot() const;
    int SetHSMSlot(int slot) { return Set("RemotePed", "HSMSlot", slot); }

    // The first stores the default identifier of "PEDId" of "Orma" (see ParsePedIdString) and returns 0. It
    // returns 1 if the key is missing or cannot be parsed, and for null. The second returns the identifier,
    // and 0 without one.
    int PEDId(unsigned int* id) const;
    unsigned int PEDId() const;
    int SetPEDId(int id) { return Set("Orma", "PEDId", id); }

    // Stores a slot's identifier of "PEDId" of "Orma", or the default one, and returns 0. Returns 1 if there
    // is neither. COMPAT: the search for the slot cuts the text, and the default is then looked for in its
    // first item up to a ":". With "1:7, 5" every slot but 1 gets the identifier 1.
    int PEDIdForSlot(unsigned int slot, unsigned short* id) const;

    // Parses a list of identifiers, "5, 1:7, 2:9": 5 is the default, 7 belongs to slot 1, and 9 to slot 2.
    // Stores the results whose pointers are not null. Returns 1 if all of these are found, else 0. Splits the
    // text in place, as far as it reads it. Identifiers have at most 5 characters, and slots 9. White space
    // around them is skipped. No identifier is above 65534. COMPAT: a default above that is found, and its
    // value is 0.
    static int ParsePedIdString(char* text, unsigned int slot, unsigned short* slotId,
                                unsigned short* defaultId);

protected:
    // Found says what a look into the file found. kNoText means that the file cannot be opened, or that not a
    // single byte of it can be read.
    enum class Found { kNoText, kNoEntry, kEntry };

    // Looks into the file as GetConfigurationEntry does, for arguments that are not null.
    Found LookUp(const char* section, const char* key, char* value, int valueSize) const;

    static constexpr int kResultSize = 500;

    // The derived logging class keeps its mask here. This class sets it to 0 and never reads it. It is atomic
    // because application threads read it while one of them renews it. Relaxed accesses suffice, since no
    // other value depends on it.
    std::atomic<unsigned> loggingMask{0};

    // Accessors that return a pointer store their results here. The derived logging class uses the second,
    // the fourth and the fifth.
    char libraryFileName[kResultSize] = {};
    char ckLogLibraryFileName[kResultSize] = {};
    char lbLibLibraryFileName[kResultSize] = {};
    char logFileName[kResultSize] = {};
    char errorFileName[kResultSize] = {};

    // The logging class counts its queries here. This class never touches it. It is atomic, and accesses are
    // relaxed, because application threads count without a lock.
    static std::atomic<unsigned> reqToCheckConfigFile;

private:
    static constexpr int kLongestNumber = 200;
    int Number(const char* section, const char* key, int size, int missing) const;
    int Text(const char* section, const char* key, char* buffer, int size) const {
        return GetConfigurationInfo(section, key, buffer, size);
    }
    int Scanned(const char* section, const char* key, int* value) const;
    int ServerNumber(const char* key, int size, int missing) const;
    int ServerText(const char* key, char* buffer, int size) const;
    int ServerScanned(const char* key, int* value) const;
    int Set(const char* section, const char* key, const char* value) {
        return SetConfigurationInfo(section, key, value);
    }
    int Set(const char* section, const char* key, int value) {
        return SetConfigurationInfo(section, key, ckscribe::NumberedName("%d", value));
    }

    static const char* NetSection(bool server) { return server ? "OrmaSA Server" : "OrmaSA Client"; }
    static const char* TokenSection(bool proxy) { return proxy ? "VirtualProxyToken" : "VirtualToken"; }

    int Switch(const char* key, bool& on) const;

    // Accesses are relaxed: other threads need only the value.
    static std::atomic<int> LibraryType;
    static char server_section[64];

    char confFileName[kResultSize] = {};
    char registryPathName[kResultSize] = {};
};
