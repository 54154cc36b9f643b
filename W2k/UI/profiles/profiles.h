/*
 * Profiles: named settings records in the user's registry, and the file that
 * carries one of them to another machine.  Nothing here shows anything; the
 * callers decide what the user is told.
 */
#ifndef QLR_PROFILES_H
#define QLR_PROFILES_H

#include "../qlrui.h"

#define PROFILE_KEY         L"Software\\Moravel\\Quillora\\Profile"
#define PROFILE_NAME_CHARS  128     /* 127 characters and the NUL */

/* store.cpp */
void ReadCurrentProfileName(WCHAR szName[PROFILE_NAME_CHARS]);
BOOL WriteCurrentProfileName(LPCWSTR pszName);
BOOL ProfileExists(LPCWSTR pszName);
BOOL ReadProfile(LPCWSTR pszName, PQLRDEVMODE pdm);
BOOL WriteProfile(LPCWSTR pszName, PQLRDEVMODE pdm);
BOOL DeleteProfile(LPCWSTR pszName);
BOOL RenameProfile(LPCWSTR pszOldName, LPCWSTR pszNewName);

/* Called with each stored profile's name in the registry's order; FALSE
 * ends the walk.  EnumProfileNames returns how many names it passed on. */
typedef BOOL (*PROFILENAMEPROC)(LPCWSTR pszName, void *pContext);
WORD EnumProfileNames(PROFILENAMEPROC pfnProc, void *pContext);

/* profilefile.cpp: one profile as a fixed 3748-byte image, little-endian,
 * no checksum; the record inside carries its own signature and version. */
#define PROFILE_FILE_MAGIC    "QLRP"
#define PROFILE_FILE_VERSION  0x100

typedef struct _PROFILEFILE {
    char  magic[4];                         /* PROFILE_FILE_MAGIC, no NUL */
    DWORD dwVersion;                        /* PROFILE_FILE_VERSION */
    WCHAR szName[PROFILE_NAME_CHARS];       /* ends with a NUL inside the field */
    QLRDEVMODE settings;                    /* as the profile store keeps it */
} PROFILEFILE;

static_assert(sizeof(PROFILEFILE) == 3748, "a profile file is 3748 bytes");
static_assert(offsetof(PROFILEFILE, dwVersion) == 4, "version at 4");
static_assert(offsetof(PROFILEFILE, szName) == 8, "name at 8");
static_assert(offsetof(PROFILEFILE, settings) == 264, "settings at 264");

BOOL ExportProfileFile(LPCWSTR pszName, LPCWSTR pszPath);
BOOL ImportProfileFile(LPCWSTR pszPath, WCHAR szName[PROFILE_NAME_CHARS]);

#endif
