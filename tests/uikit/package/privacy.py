#!/usr/bin/env python3
"""privacy.py MANIFEST BINARY: the privacy manifest is complete, and declares what the binary takes from the system.

Which names belong to which category, and which reasons there are, is in the public documentation of the manifest.
"""

import plistlib
import subprocess
import sys

PREFIX = "NSPrivacyAccessedAPICategory"
NAMES = {
    "UserDefaults": {"_OBJC_CLASS_$_NSUserDefaults"},
    "SystemBootTime": {"_mach_absolute_time", "_mach_continuous_time", "_clock_gettime_nsec_np"},
    "FileTimestamp": {"_stat", "_fstat", "_lstat", "_fstatat", "_getattrlist", "_getattrlistbulk", "_fgetattrlist",
                      "_getattrlistat", "_NSFileModificationDate", "_NSFileCreationDate",
                      "_NSURLContentModificationDateKey", "_NSURLCreationDateKey"},
    "DiskSpace": {"_statfs", "_statvfs", "_fstatfs", "_fstatvfs", "_NSFileSystemFreeSize", "_NSFileSystemSize",
                  "_NSURLVolumeAvailableCapacityKey", "_NSURLVolumeTotalCapacityKey"},
    "ActiveKeyboards": {"_OBJC_CLASS_$_UITextInputMode"},
}
REASONS = {
    "UserDefaults": {"CA92.1", "1C8F.1", "C56D.1", "AC6B.1"},
    "SystemBootTime": {"35F9.1", "8FFB.1", "3D61.1"},
    "FileTimestamp": {"DDA9.1", "C617.1", "3B52.1", "0A2A.1"},
    "DiskSpace": {"85F4.1", "E174.1", "7D9E.1", "B728.1"},
    "ActiveKeyboards": {"3EC4.1", "54BD.1"},
}
COLLECTED = {"NSPrivacyCollectedDataType" + name for name in ("UserID", "DeviceID", "ProductInteraction")}
KEYS = {"NSPrivacyTracking", "NSPrivacyTrackingDomains", "NSPrivacyCollectedDataTypes", "NSPrivacyAccessedAPITypes"}


def undefined(binary):
    output = subprocess.run(["llvm-nm-19", "-u", "-j", binary], capture_output=True, text=True, check=True).stdout
    return set(output.split())


def faults(manifest, symbols):
    if set(manifest) != KEYS:
        yield f"its keys are {sorted(manifest)}"
        return
    declared = {entry["NSPrivacyAccessedAPIType"].removeprefix(PREFIX): set(entry["NSPrivacyAccessedAPITypeReasons"])
                for entry in manifest["NSPrivacyAccessedAPITypes"]}
    used = {category for category, names in NAMES.items() if names & symbols}
    for category in sorted(used - set(declared)):
        yield f"{category} is used but not declared: {sorted(NAMES[category] & symbols)}"
    for category in sorted(set(declared) - used):
        yield f"{category} is declared but not used"
    for category, reasons in declared.items():
        if not reasons or reasons - REASONS.get(category, set()):
            yield f"{category} has the reasons {sorted(reasons)}"
    types = [entry["NSPrivacyCollectedDataType"] for entry in manifest["NSPrivacyCollectedDataTypes"]]
    if set(types) != COLLECTED or len(types) != len(COLLECTED):
        yield f"it collects {types}"
    for entry in manifest["NSPrivacyCollectedDataTypes"]:
        if not entry["NSPrivacyCollectedDataTypePurposes"]:
            yield f"{entry['NSPrivacyCollectedDataType']} has no purpose"
    if "_OBJC_CLASS_$_ATTrackingManager" in symbols and manifest["NSPrivacyTracking"] is not True:
        yield "it asks to track, but says that it does not"
    if not manifest["NSPrivacyTrackingDomains"]:
        yield "it tracks, but names no domain"


def main():
    path, binary = sys.argv[1:]
    with open(path, "rb") as file:
        found = list(faults(plistlib.load(file), undefined(binary)))
    print("\n".join(found))
    sys.exit(bool(found))


main()
