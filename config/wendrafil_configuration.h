#pragma once

// The configuration store: finds the vendor's configuration file, reads its settings and edits them.
//
// An instance holds the file's path and five result buffers, but neither an open file nor its text: every
// lookup reads the whole file again, so that a change made by another program counts at once. Nothing throws
// and nothing is printed unless said so; results are 1 for success or found and 0 for failure or not found. A
// value that was not found leaves the caller's buffer alone; one that does not fit is cut without notice.
//
// Sizes of buffers count the terminating NUL. A pointer that an accessor returns points into the instance and
// is valid until that accessor is called again.
//
// Threads: lookups into the caller's own buffers may run at the same time, on one instance too. Accessors
// that return a pointer, and everything that edits, must be serialised by the caller (editors across
// processes too).

#include <atomic>
#include <cstdio>

#include "config/numbered_name.h"

class WendrafilConfiguration {
public:
    WendrafilConfiguration();
    virtual ~WendrafilConfiguration();

    // The path of the configuration file. Every operation on the file asks for it here, so that a derived
    // class can point the whole store at another file.
    virtual const char* GetConfFileName() const;

    WendrafilConfiguration(const WendrafilConfiguration&) = delete;
    WendrafilConfiguration& operator=(const WendrafilConfiguration&) = delete;

    // --- Places and kinds of store
    // ---------------------------------------------------------------------------

    // Stores and returns the file's path: "Wendrafil.conf" in the directory (its first 256 characters) that
    // the environment variable "WendrafilConfigurationPath" names, else in "/etc". Run by the constructor.
    const char* InitializeConfFileName();

    // Empties the registry path and returns the environment variable "WendrafilRegistryPath", which may be
    // null.
    const char* InitializeRegistryPathName();
    const char* GetRegistryPathName() const { return registryPathName; }

    // Cuts a path back to its directory, in place; "/" and "\" separate, and the last of them stays.
    static void StripOffFileName(char* path);

    // The kind of store for all instances: 0 the file (the only one that works), 1 the registry, which finds
    // and stores nothing; any other value stands for no store.
    static void SetLibraryType(int type) { LibraryType.store(type, std::memory_order_relaxed); }
    static int GetLibraryType() { return LibraryType.load(std::memory_order_relaxed); }

    // The section of the network server's settings, for all instances; "OrmaSA Server" at first.
    // GetServerSection fails for a null buffer or when `size` is below the name's length; a name whose NUL
    // does not fit loses its last character. SetServerSection fails for null and keeps 63 characters; it must
    // not run while another thread uses the section.
    static int GetServerSection(char* buffer, unsigned int size);
    static int SetServerSection(const char* name);

    static const char* GetLBLibSectionName() { return "LBLib2"; }
    static const char* GetSessionSectionName() { return "Session"; }
    static int IsSTCEnabled() { return 1; }

    // 1 when the file can be opened for reading, or for reading and writing. With another kind of store
    // always 1.
    int TestR() const;
    int TestRW() const;

    // --- Reading the file
    // ------------------------------------------------------------------------------------

    // Reads a whole file: `*contents` receives a new array that the caller deletes (delete[]), with a NUL
    // after the text, and `*size` the file's size. Fails for null arguments, a file that cannot be opened or
    // asked for its size, without memory, and for an empty file; `*contents` is null then. A failed or short
    // read is not reported: the text then ends early.
    int ReadConfigurationFile(const char* path, char** contents, unsigned long* size) const;

    // Writes the text of the configuration file to `stream`.
    int DumpFile(FILE* stream) const;

    // Looks a key up (config/entry_lookup.h says how) and copies its value, cut to `valueSize` - 1
    // characters. `valueSize` is taken as unsigned; with 0 nothing is copied. Null arguments: not found.
    int GetConfigurationEntry(const char* section, const char* key, char* value, int valueSize) const;

    // The same when the store is the file, else 0.
    int GetConfigurationInfo(const char* section, const char* key, char* value, int valueSize) const;

    // The same in the current kind of store.
    int GetEntry(const char* section, const char* key, char* value, unsigned long valueSize) const;

    // The registry store exists in name only: nothing is found or stored.
    int GetRegistryEntry(const char*, const char*, char*, unsigned long) const { return 0; }
    int SetRegistryEntry(const char*, const char*, const char*, unsigned short) { return 0; }

    // --- Changing the file
    // -----------------------------------------------------------------------------------

    // Each rewrites the whole file in place: lines are cut at 838 characters and end with a line feed. 0 when
    // the store is not the file, for null arguments, when the file cannot be read whole or cannot be written
    // (it is untouched then), or when a line to write has 840 characters or more with its line feed; the old
    // line is gone then, the rest is written. Errors in writing go unreported.
    //
    // A section is taken to begin at a line that contains its name anywhere and to end at the next line that
    // contains "}". Names that are part of others, and values that mention a section, are therefore edited
    // along with it; a section that nothing closes gets no new key.

    // Sets a key. An entry of that name, or of a longer name that ends with it, becomes "   key = value;"; a
    // missing one is inserted before the section's "}", a missing section appended to the file. The line that
    // begins a section must contain "{" too.
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

    // Replaces all lines of a section by `body`, broken into lines after every 512 characters; a missing
    // section is appended to the file. The last argument is not used.
    int ReplaceConfigurationInfo(const char* section, const char* body, int reserved);

    // --- Settings
    // --------------------------------------------------------------------------------------------
    //
    // One accessor for each setting, with its editor beside it. Their bodies show section, key, the size of
    // the buffer in which a number is read, and the number that stands for a missing key:
    //
    //   Number(section, key, size, missing)    the value as atoi reads it: "12abc" is 12, "abc" is 0
    //   Text(section, key, buffer, size)       the value into the caller's buffer; 1 when found, else 0
    //   Scanned(section, key, int*)            1 when a number was found and stored, else 0
    //   ServerNumber, ServerText, ServerScanned    the same in the server section, then in "OrmaSA Server"
    //   Set(section, key, text or number)      as SetConfigurationInfo; 1 when done, else 0
    //
    // Accessors without a body have rules of their own, which their comments tell. Indices and cluster
    // numbers are written with at least two digits. `proxy` and `server` choose the first of two sections. A
    // null buffer reads as not found.

    // Target libraries. "LibUNIX64" of a section, "/usr/lib/libmordavek2.so" when it is missing (result 0);
    // the form without arguments reads section "Wendrafil2". The load-balancing library is "LibUNIX" of
    // "LBLib2", with the same default.
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

    // Behaviour of the client library.
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

    // "AllowPTK" of "Misc" begins with "1".
    bool GetAllowPTK() const;

    // "KeysInHW" of "Misc" is "YES" in any case.
    bool IsKeyInHW() const;

    // "CryptokiContainerName" of "Misc", at most 99 characters; `buffer` has room for 100.
    int GetCryptokiContainerName(char* buffer) const {
        return Text("Misc", "CryptokiContainerName", buffer, 100);
    }

    // "AppIdMajor" and "AppIdMinor" of "Misc", hexadecimal after "0x", else decimal; 0 when missing.
    // Deliberate: a missing minor number repeats the major one. 1 when either was found.
    int ExplicitAppId(unsigned long& major, unsigned long& minor) const;

    // The log file of the enabler, "LogFile" of "Misc"; empty when missing.
    const char* EnablerLogFileName();
    int SetEnablerLogFileName(const char* path) { return Set("Misc", "LogFile", path); }

    // Certificate management products.
    int IsEntrustMgr() const { return Number("Misc", "EntrustMgr4", 200, 0); }
    int IsUseEntrustDatabase() const { return Number("Misc", "EntrustSoftwareKeyStorage", 200, 0); }
    int IsEntrust3_0Used() const { return Number("Misc", "Entrust3_0", 200, 0); }
    int IsEntrustSWInstall() const { return Number("Misc", "EntrustSWInstall", 200, 0); }
    int SetEntrustSWInstall(int value) { return Set("Misc", "EntrustSWInstall", value); }

    // "TokenInitString" of "Misc" into `buffer`, which has room for 100: the value's length, at most 99; 0
    // for a missing key or a null buffer.
    int GetEntrustCAPasswd(char* buffer) const;

    // Commands to the device: time-outs, slots.
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

    // Card readers.
    int CardReaderDurnelCount() const { return Number("CardReader", "DurnelCount", 200, 0); }
    int IsRemoteCommandPreferred() const { return Number("CardReader", "RemoteCommand", 200, 0); }
    int GetCardReaderDurnelName(int index, char* buffer, int size) const {
        return Text("CardReader", ckscribe::NumberedName("Durnel%dName", index), buffer, size);
    }

    // "InstanceOrmaCR" of "CardReader", as atoi reads 31 characters; a missing key leaves `*out` alone,
    // result 0.
    int InstanceOrmaCR(int* out) const;

    // The network client.
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

    // The network server.
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

    // Written to the server section, and only when that fails to "OrmaSA Server".
    int SetClientCAFile(const char* path) {
        return Set(server_section, "ClientCAFile", path) || Set("OrmaSA Server", "ClientCAFile", path);
    }

    // "AttackTimeout", in the server section, then "OrmaSA Server": 10 when missing or 0, at most 20.
    int GetAttackTimeout() const;

    // "NTLSThreads", in the server section, then "OrmaSA Server": 1 when missing or 0.
    int GetServerThreadCount() const;

    // `check` becomes false when "SRC_IP_CHK" of "OrmaSA Server" begins with "disable", else true. 1 when
    // found.
    int GetSourceIPChecking(bool& check) const;

    // The list of servers, from index 0 to the first missing name, in "OrmaSA Server" or "OrmaSA Client".
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

    // Counts the names and copies each (at most 49 characters) into its element of `names`, when both the
    // array and the element are there; an element has room for 50. 1 when there are any, else 0.
    int GetListOfServers(int& count, char** names, bool server) const;

    // Adds a name to the list, in the first place whose name is empty or missing. 2, and nothing is written,
    // when the list holds it already.
    int SetOrmaNetServerName(const char* name, bool server);

    // Renames the server that is called `oldName`; -1 when there is none. The index is not used: the name
    // tells.
    int ReplaceOrmaNetServerName(const char* oldName, const char* newName, int index, bool server);

    // Empties a server's name, port and HTL entries in this order, up to the first failure; their places
    // stay. 3 when the list does not hold the name.
    int DeleteOrmaNetServerPair(const char* name, bool server);

    // Writes the port to the first index whose "ServerPort%02d" is empty or missing.
    int SetServerPort(const int* port, bool server);

    // Writes "1" when `required` is 1, else "0". A negative index stands for the first one whose
    // "ServerHtl%02d" is empty or missing.
    int SetServerHtlRequired(int required, bool server, int index);

    // Clusters are sections "Cluster01", "Cluster02", ... up to the first one without a "ClusterName".
    // Names longer than 39 characters are never found.

    // Copies the "ClusterMemberFile" (at most 1023 characters, empty when missing) of the cluster called
    // `name`; `out` has room for 1024. Deliberate: only the first two clusters are looked at. 1 when found,
    // else 0.
    int GetClusterMemberFile(const char* name, char* out) const;

    // Copies each non-empty name (at most 49 characters) to the next element of `names`; the caller supplies
    // enough elements, with room for 50 each. 1 when there are any; 0 when there is a first cluster but every
    // name is empty; without a cluster 3 when a client certificate file is configured and 2 when not.
    int GetListOfClusters(int& count, char** names) const;

    // For a command line: print the "ClusterReceiveTimeout" (or "ClusterRecoverInterval"), at most 4
    // characters, of the cluster called args[1], or of all named clusters when args[1] begins with
    // "ALLCLUSTERTIMEOUTS" (or "ALLCLUSTERINTERVALS"). `value` is not written. 1; -1 when there is no such
    // cluster, which is printed too.
    int GetOrmaNetClusterReceiveTimeout(int& value, char** args) const;
    int GetOrmaNetClusterRecoverInterval(int& value, char** args) const;

    // Sets them. -1 when there is no such cluster, which is printed.
    int SetOrmaNetClusterReceiveTimeout(const char* name, int milliseconds);
    int SetOrmaNetClusterRecoverInterval(const char* name, int seconds);

    // Adds a cluster, in the first place whose name is empty or missing: writes its member file, unless that
    // is empty, then its name, and returns the result of the last. 2, and nothing is written, when it exists.
    int SetOrmaNetClusterName(const char* name, const char* memberFile);

    // Empties a cluster's name and member file entries, and deletes the member file and the cluster's server
    // certificate, which stands beside the folder of the client's. Says on standard output what is missing.
    // 1, for an unknown cluster too; 0 when no client certificate file is configured.
    int DeleteOrmaNetClusterPair(const char* name);

    // High availability.
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

    // Adds 1 to GetHARecovery.
    int UpHARecovery(const char* key);

    // "haLogStatus" and "haProxy" of "HAConfiguration": `on` becomes true when the value begins with
    // "enable", false when it begins with "#" or is missing. Deliberate: any other value leaves `on` alone. 1
    // when found.
    int GetHALog(bool& on) const { return Switch("haLogStatus", on); }
    int GetHAProxy(bool& on) const { return Switch("haProxy", on); }

    // "logLen" of "HAConfiguration", as atoi reads 18 characters: 0 when missing, 262144 for a negative
    // number or a value that begins with "#". 1 when found.
    int GetHALogfilemaxlen(int& length) const;

    // "reconnAtt" of "HAConfiguration", as atoi reads 4 characters; 0 when missing. 1 when found.
    int GetHAAutoRecoverCount(int& count) const;

    // Writes at most 5 characters of the number.
    int SetHAAutoRecoverCount(int count);

    // Virtual tokens, in "VirtualProxyToken" or "VirtualToken".
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

    // Appends a serial number to a token's list of members, after a comma. Fails when the token has no label,
    // and when list and number have more than 840 characters together.
    int AddVirtualTokenMember(int index, const char* serial, bool proxy);

    // Takes every member of that serial number off a token's list, and all spaces. Fails when the list is
    // missing or empty.
    int RemoveVirtualTokenMember(int index, const char* serial, bool proxy);

    // Takes a token out of its section, which is rebuilt: of each other token below index 100 it keeps label,
    // serial number, members and the two synchronisation entries, under the same index. Fails, with the file
    // untouched, when the section holds no token at all.
    int DeleteVirtualToken(int index, bool proxy);

    // PIN entry devices. Deliberate: where these are said to return 0, that is success, and 1 failure.

    // "PEDTimeout1" to "PEDTimeout4" of "Orma", 0 for each that is missing. 0; 1 when any pointer is null.
    int PEDTimeout(unsigned long* t1, unsigned long* t2, unsigned long* t3, unsigned long* t4) const;

    // "HSMSlot" of "RemotePed": 0; 1, and `*slot` is 0, when it is missing; 1 for null. Or the slot itself.
    int HSMSlot(unsigned int* slot) const;
    unsigned int HSMSlot() const;
    int SetHSMSlot(int slot) { return Set("RemotePed", "HSMSlot", slot); }

    // The default identifier of "PEDId" of "Orma" (see ParsePedIdString): 0; 1 when the key is missing or
    // cannot be parsed, and for null. Or the identifier itself, 0 without one.
    int PEDId(unsigned int* id) const;
    unsigned int PEDId() const;
    int SetPEDId(int id) { return Set("Orma", "PEDId", id); }

    // A slot's identifier in "PEDId" of "Orma", or the default one: 0; 1 when there is neither. Deliberate:
    // the default is looked for in what the search for the slot has left of the text, its first item up to a
    // ":". With "1:7, 5" every slot but 1 is given 1.
    int PEDIdForSlot(unsigned int slot, unsigned short* id) const;

    // Parses a list of identifiers, "5, 1:7, 2:9": 5 is the default, 7 that of slot 1, 9 that of slot 2. The
    // wanted results (a null pointer wants none) are stored; 1 when all were found, else 0. The text is split
    // in place, as far as it was needed. Identifiers have at most 5 characters and slots 9, white space
    // around them is skipped, and none is above 65534; deliberate: a default above that is found, with the
    // value 0.
    static int ParsePedIdString(char* text, unsigned int slot, unsigned short* slotId,
                                unsigned short* defaultId);

protected:
    // What a look into the file gives. kNoText: the file cannot be opened, or not a single byte of it can be
    // read.
    enum class Found { kNoText, kNoEntry, kEntry };

    // Looks into the file as GetConfigurationEntry does, for arguments that are not null.
    Found LookUp(const char* section, const char* key, char* value, int valueSize) const;

    static constexpr int kResultSize = 500;

    // For the derived logging class: its cached logging mask, which this class sets to 0 and never reads.
    // Atomic because application threads read it while one of them renews it; relaxed accesses suffice, it
    // stands alone.
    std::atomic<unsigned> loggingMask{0};

    // Result buffers. The second, the fourth and the fifth are the derived logging class's to use.
    char libraryFileName[kResultSize] = {};
    char ckLogLibraryFileName[kResultSize] = {};
    char lbLibLibraryFileName[kResultSize] = {};
    char logFileName[kResultSize] = {};
    char errorFileName[kResultSize] = {};

    // Counts the logging class's queries; this class never touches it. Atomic, relaxed, as application
    // threads count without a lock.
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

    // Relaxed: readers on other threads need the value only.
    static std::atomic<int> LibraryType;
    static char server_section[64];

    char confFileName[kResultSize] = {};
    char registryPathName[kResultSize] = {};
};
