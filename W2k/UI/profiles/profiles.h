/*
 * Profiles: named settings records in the user's registry.  The store shows
 * nothing itself; its callers decide what the user is told.
 */
#ifndef QLR_PROFILES_H
#define QLR_PROFILES_H

#include "../qlrui.h"

#define PROFILE_KEY         L"Software\\Moravel\\Quillora\\Profile"
#define PROFILE_NAME_CHARS  128     /* 127 characters and the NUL */

void ReadCurrentProfileName(WCHAR szName[PROFILE_NAME_CHARS]);
BOOL WriteCurrentProfileName(LPCWSTR pszName);
BOOL ProfileExists(LPCWSTR pszName);
BOOL ReadProfile(LPCWSTR pszName, PQLRDEVMODE pdm);
BOOL WriteProfile(LPCWSTR pszName, PQLRDEVMODE pdm);
BOOL DeleteProfile(LPCWSTR pszName);
BOOL RenameProfile(LPCWSTR pszOldName, LPCWSTR pszNewName);

/* profilefile.cpp */
#define PROFILE_FILE_MAGIC    "QLRP"
#define PROFILE_FILE_VERSION  0x100

BOOL ExportProfileFile(LPCWSTR pszName, LPCWSTR pszPath);
BOOL ImportProfileFile(LPCWSTR pszPath, WCHAR szName[PROFILE_NAME_CHARS]);

#endif
