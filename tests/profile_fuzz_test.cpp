// Damaged profile files and damaged registry values, many thousands of each.
// A refused file leaves the registry exactly as it was; an accepted one is
// stored whole and reads back.  Whatever a profile value holds, reading it
// stays inside the reader's buffer and loads nothing but a whole record.
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>
#include "profiles/profiles.h"
#include "files.h"
#include "guarded.h"

namespace {

const LPCWSTR FUZZ = L"qlr fuzz";

struct StoredValue {
    DWORD type;
    std::vector<BYTE> data;
    bool operator==(const StoredValue &o) const { return type == o.type && data == o.data; }
};
typedef std::map<std::wstring, StoredValue> RegistryImage;

StoredValue DefaultValue(HKEY hKey)
{
    StoredValue v = { REG_NONE, {} };
    DWORD cb = 0;
    if (RegQueryValueExW(hKey, NULL, NULL, &v.type, NULL, &cb) == ERROR_SUCCESS) {
        v.data.resize(cb);
        RegQueryValueExW(hKey, NULL, NULL, &v.type, v.data.data(), &cb);
    }
    return v;
}

// The profile key and every profile under it, with their values.
RegistryImage TakeImage()
{
    RegistryImage image;
    HKEY hRoot;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, PROFILE_KEY, 0, KEY_READ, &hRoot) != ERROR_SUCCESS)
        return image;
    image[L""] = DefaultValue(hRoot);
    WCHAR name[256];
    for (DWORD i = 0, cch = 256; RegEnumKeyExW(hRoot, i, name, &cch, NULL, NULL, NULL, NULL) == ERROR_SUCCESS;
         i++, cch = 256) {
        HKEY hSub;
        if (RegOpenKeyExW(hRoot, name, 0, KEY_READ, &hSub) == ERROR_SUCCESS) {
            image[std::wstring(L"\\") + name] = DefaultValue(hSub);
            RegCloseKey(hSub);
        }
    }
    RegCloseKey(hRoot);
    return image;
}

void StoreValue(LPCWSTR name, DWORD type, const BYTE *data, DWORD cb)
{
    HKEY hKey;
    std::wstring path = name[0] ? std::wstring(PROFILE_KEY) + L"\\" + name : PROFILE_KEY;
    RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, NULL, 0, KEY_WRITE, NULL, &hKey, NULL);
    RegSetValueExW(hKey, NULL, 0, type, data, cb);
    RegCloseKey(hKey);
}

// Every size up to a little past `whole` for the type the store writes; for
// the others the small sizes, those around `whole`, and larger steps.
std::vector<DWORD> Sizes(bool every, DWORD whole, DWORD most)
{
    std::vector<DWORD> sizes;
    for (DWORD cb = 0; cb <= most; cb++) {
        bool nearWhole = cb + 8 >= whole && cb <= whole + 8;
        if (every ? cb <= whole + 128 || cb % 512 == 0 : cb < 64 || nearWhole || cb % 97 == 0)
            sizes.push_back(cb);
    }
    return sizes;
}

class ProfileFuzz : public ::testing::Test {
protected:
    WCHAR savedCurrent[PROFILE_NAME_CHARS];
    std::wstring path = TempFile(L"qlr-fuzz.qlr");
    std::vector<BYTE> good;

    void SetUp() override
    {
        ReadCurrentProfileName(savedCurrent);
        QLRDEVMODE dm;
        SetDefDM(NULL, &dm);
        lstrcpyW(dm.szComments, L"fuzzed");
        ASSERT_TRUE(WriteProfile(FUZZ, &dm));
        ASSERT_TRUE(ExportProfileFile(FUZZ, path.c_str()));
        good = ReadBytes(path);
        ASSERT_EQ(3748u, good.size());
        ASSERT_TRUE(DeleteProfile(FUZZ));
    }
    void TearDown() override
    {
        DeleteProfile(FUZZ);
        WriteCurrentProfileName(savedCurrent);
        DeleteFileW(path.c_str());
    }

    // Imports one file: a refusal must leave `before` as it was; an accepted
    // file must read back as the record it carried, and is removed again.
    // Returns whether the file was accepted.
    bool Import(const std::vector<BYTE> &file, const RegistryImage &before, const char *what, size_t detail)
    {
        WriteBytes(path, file);
        WCHAR name[PROFILE_NAME_CHARS] = L"";
        if (!ImportProfileFile(path.c_str(), name)) {
            EXPECT_TRUE(before == TakeImage()) << what << " " << detail << ": a refusal changed the registry";
            return false;
        }
        QLRDEVMODE read, carried;
        memcpy(&carried, &file[264], sizeof(carried));
        EXPECT_TRUE(ReadProfile(name, &read)) << what << " " << detail << ": stored but unreadable";
        carried.dmPublic.dmDriverVersion = read.dmPublic.dmDriverVersion;
        carried.m_bProfiled = read.m_bProfiled;
        EXPECT_EQ(0, memcmp(&carried, &read, sizeof(read))) << what << " " << detail << ": stored differently";
        DeleteProfile(name);
        return true;
    }
};

TEST_F(ProfileFuzz, DamagedFilesAreRefusedWithoutTraceOrStoredWhole)
{
    const RegistryImage before = TakeImage();
    int tried = 0, accepted = 0;

    for (size_t size = 0; size <= good.size() + 64; size++) {
        if (size == good.size())
            continue;
        std::vector<BYTE> f(good.begin(), good.begin() + std::min(size, good.size()));
        f.resize(size, 0);
        EXPECT_FALSE(Import(f, before, "size", size));
        tried++;
    }
    for (size_t at = 0; at < 4; at++)
        for (int value = 0; value < 256; value++) {
            if (value == good[at])
                continue;
            std::vector<BYTE> f = good;
            f[at] = (BYTE)value;
            EXPECT_FALSE(Import(f, before, "magic byte", at));
            tried++;
        }
    for (DWORD version : { 0u, 1u, 0xFFu, 0x101u, 0x200u, 0x10100u, 0x01000000u, 0xFFFFFFFFu }) {
        std::vector<BYTE> f = good;
        memcpy(&f[4], &version, 4);
        EXPECT_FALSE(Import(f, before, "version", version));
        tried++;
    }
    // Names of every length, without a backslash and with one at the start,
    // in the middle and at the end.
    for (int len = 0; len <= PROFILE_NAME_CHARS; len++)
        for (int slash : { -1, 0, len / 2, len - 1 }) {
            if (slash >= len)
                continue;
            std::vector<BYTE> f = good;
            WCHAR *name = (WCHAR *)&f[8];
            memset(name, 0, PROFILE_NAME_CHARS * sizeof(WCHAR));
            for (int i = 0; i < len; i++)
                name[i] = i == slash ? L'\\' : (WCHAR)(L'a' + i % 26);
            bool usable = len >= 1 && len < PROFILE_NAME_CHARS && slash < 0;
            EXPECT_EQ(usable, Import(f, before, "name length", len * 1000 + (slash + 1)));
            tried++;
        }
    // Every single byte of the file turned over.
    for (size_t at = 0; at < good.size(); at++) {
        std::vector<BYTE> f = good;
        f[at] ^= 0xFF;
        accepted += Import(f, before, "byte", at);
        tried++;
    }
    printf("damaged profile files tried: %d (%d single-byte changes stored whole)\n", tried, accepted);
    EXPECT_TRUE(before == TakeImage());
}

TEST_F(ProfileFuzz, ProfileValuesOfEveryTypeAndSizeLoadOnlyWholeRecords)
{
    QLRDEVMODE dm;
    SetDefDM(NULL, &dm);
    dm.m_bProfiled = TRUE;
    std::vector<BYTE> bytes(8192, 0x5A);
    memcpy(bytes.data(), &dm, sizeof(dm));
    const DWORD types[] = { REG_NONE, REG_SZ, REG_EXPAND_SZ, REG_BINARY, REG_DWORD, REG_DWORD_BIG_ENDIAN, REG_LINK,
                            REG_MULTI_SZ, REG_RESOURCE_LIST, REG_QWORD, 0x7FFF };
    int tried = 0;
    Guarded out(sizeof(QLRDEVMODE), 0xCC);
    for (DWORD type : types)
        for (DWORD cb : Sizes(type == REG_BINARY, sizeof(QLRDEVMODE), (DWORD)bytes.size())) {
            StoreValue(FUZZ, type, bytes.data(), cb);
            bool whole = type == REG_BINARY && cb == sizeof(QLRDEVMODE);
            EXPECT_EQ(whole, ReadProfile(FUZZ, out.as<QLRDEVMODE>()) != FALSE) << "type " << type << ", " << cb;
            tried++;
        }

    // The current profile's name, stored without a NUL and at every length,
    // comes back terminated and never longer than a profile name may be.
    Guarded name(PROFILE_NAME_CHARS * sizeof(WCHAR), 0xCC);
    std::vector<BYTE> letters(1024);
    for (size_t i = 0; i < letters.size(); i += 2) {
        letters[i] = 'q';
        letters[i + 1] = 0;
    }
    for (DWORD type : types)
        for (DWORD cb : Sizes(type == REG_SZ, PROFILE_NAME_CHARS * sizeof(WCHAR), (DWORD)letters.size())) {
            StoreValue(L"", type, letters.data(), cb);
            ReadCurrentProfileName(name.as<WCHAR>());
            int len = 0;
            while (len < PROFILE_NAME_CHARS && name.as<WCHAR>()[len])
                len++;
            EXPECT_LT(len, PROFILE_NAME_CHARS) << "type " << type << ", " << cb;
            tried++;
        }
    printf("profile registry values tried: %d\n", tried);
}

}  // namespace
