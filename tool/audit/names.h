// The audit library and `ckscribe run` share these names: the environment, the files of the private
// directory, the settings and the notices.
#pragma once

namespace ckscribe {

// This environment variable names the private directory of a run. Without it the audit library does nothing.
inline constexpr char kRunVariable[] = "CKSCRIBE_RUN";

// This environment variable leads libckscribe.so to its configuration.
inline constexpr char kConfigurationVariable[] = "WendrafilConfigurationPath";

// These are files of the private directory.
inline constexpr char kConfigurationFile[] = "/Wendrafil.conf";
inline constexpr char kSettingsFile[] = "/run.settings";  // lines "NAME VALUE", see below
inline constexpr char kNoticesFile[] = "/notices";        // records of the audit libraries, see below
inline constexpr char kTargetLink[] = "/module.so";  // what the private configuration names as the target

// These are the settings. `library` and one of the three ways to choose the module are always present.
inline constexpr char kLibrarySetting[] = "library ";  // path of libckscribe.so
inline constexpr char kModuleSetting[] = "module ";    // trace this file, under whatever name it is loaded
inline constexpr char kNameSetting[] = "name ";        // trace the first module whose file has this name
inline constexpr char kFirstSetting[] = "first";       // trace the first module
inline constexpr char kOwnTargetSetting[] =
    "target ";  // target of an application that loads libckscribe.so itself

// These are the kinds of notices. Each notice is one append: kind, process number, a blank, text, NUL.
inline constexpr char kTracedNotice = 'T';          // this module is logged
inline constexpr char kUntouchedNotice = 'U';       // this module was loaded at run time and is not logged
inline constexpr char kLinkedNotice = 'L';          // a program or library was linked with this module
inline constexpr char kOtherInterfaceNotice = 'I';  // this one was left for its interfaces besides PKCS#11's
inline constexpr char kConfigurationNotice = 'C';   // the process came with this configuration directory
inline constexpr char kLostNotice = 'E';            // the process came without kConfigurationVariable

}  // namespace ckscribe
