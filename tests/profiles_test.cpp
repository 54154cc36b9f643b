// The profile store on the real registry of the test prefix.  Every test uses
// names of its own and puts the current-profile name back afterwards.
#include <gtest/gtest.h>
#include <string>
#include <vector>
#include "profiles/profiles.h"
#include "files.h"

namespace {

class ProfileStore : public ::testing::Test {
protected:
    WCHAR savedCurrent[PROFILE_NAME_CHARS];
    void SetUp() override
    {
        ReadCurrentProfileName(savedCurrent);
        for (LPCWSTR name : { L"qlr test A", L"qlr test B", L"QLR TEST C", L"qlr test c" })
            DeleteProfile(name);
    }
    void TearDown() override
    {
        for (LPCWSTR name : { L"qlr test A", L"qlr test B", L"QLR TEST C", L"qlr test c" })
            DeleteProfile(name);
        WriteCurrentProfileName(savedCurrent);
    }
    static QLRDEVMODE Record(int iOutputFormat)
    {
        QLRDEVMODE dm;
        SetDefDM(NULL, &dm);
        dm.iOutputFormat = iOutputFormat;
        return dm;
    }
    static void StoreRaw(LPCWSTR name, DWORD type, const void *data, DWORD cb)
    {
        HKEY hKey;
        WCHAR path[256];
        wsprintfW(path, L"%s\\%s", PROFILE_KEY, name);
        ASSERT_EQ(ERROR_SUCCESS, RegCreateKeyExW(HKEY_CURRENT_USER, path, 0, NULL, 0, KEY_WRITE, NULL, &hKey, NULL));
        ASSERT_EQ(ERROR_SUCCESS, RegSetValueExW(hKey, NULL, 0, type, (const BYTE *)data, cb));
        RegCloseKey(hKey);
    }
};

TEST_F(ProfileStore, WriteReadAndReplace)
{
    EXPECT_FALSE(ProfileExists(L"qlr test A"));
    QLRDEVMODE read;
    EXPECT_FALSE(ReadProfile(L"qlr test A", &read));

    QLRDEVMODE dm = Record(FORMAT_TIFF);
    ASSERT_TRUE(WriteProfile(L"qlr test A", &dm));
    EXPECT_TRUE(dm.m_bProfiled) << "the caller's record is marked as saved";
    EXPECT_TRUE(ProfileExists(L"qlr test A"));
    EXPECT_TRUE(ProfileExists(L"QLR TEST a")) << "names compare without case";
    ASSERT_TRUE(ReadProfile(L"qlr test A", &read));
    EXPECT_EQ(0, memcmp(&dm, &read, sizeof(dm)));

    dm = Record(FORMAT_PCX);
    ASSERT_TRUE(WriteProfile(L"qlr test A", &dm));
    ASSERT_TRUE(ReadProfile(L"qlr test A", &read));
    EXPECT_EQ(FORMAT_PCX, read.iOutputFormat);
}

TEST_F(ProfileStore, ReadingRestoresTheDriverVersionAndRefusesPartialValues)
{
    QLRDEVMODE dm = Record(FORMAT_GIF);
    dm.m_bProfiled = TRUE;
    dm.dmPublic.dmDriverVersion = 0x0100;
    StoreRaw(L"qlr test A", REG_BINARY, &dm, sizeof(dm));
    QLRDEVMODE read;
    ASSERT_TRUE(ReadProfile(L"qlr test A", &read));
    EXPECT_EQ(QLR_DRIVER_VERSION, read.dmPublic.dmDriverVersion);
    EXPECT_EQ(FORMAT_GIF, read.iOutputFormat);

    // An older driver's record (private version 0x2000) or one of zeros is
    // still a profile: the pages repair what they load.
    dm.dwPrivVersion = 0x2000;
    StoreRaw(L"qlr test B", REG_BINARY, &dm, sizeof(dm));
    EXPECT_TRUE(ReadProfile(L"qlr test B", &read));
    EXPECT_EQ(0x2000u, read.dwPrivVersion);
    QLRDEVMODE zeros = {};
    StoreRaw(L"qlr test B", REG_BINARY, &zeros, sizeof(zeros));
    EXPECT_TRUE(ReadProfile(L"qlr test B", &read));

    struct { DWORD type; DWORD cb; } refusals[] = { { REG_BINARY, 10 }, { REG_SZ, sizeof(dm) } };
    for (size_t i = 0; i < ARRAYSIZE(refusals); i++) {
        StoreRaw(L"qlr test B", refusals[i].type, &dm, refusals[i].cb);
        EXPECT_FALSE(ReadProfile(L"qlr test B", &read)) << "case " << i;
    }
    BYTE big[4000] = {};
    StoreRaw(L"qlr test B", REG_BINARY, big, sizeof(big));
    EXPECT_FALSE(ReadProfile(L"qlr test B", &read));
}

TEST_F(ProfileStore, CurrentProfileNameRoundTrips)
{
    ASSERT_TRUE(WriteCurrentProfileName(L"qlr test A"));
    WCHAR name[PROFILE_NAME_CHARS];
    ReadCurrentProfileName(name);
    EXPECT_STREQ(L"qlr test A", name);

    WCHAR longest[PROFILE_NAME_CHARS];
    for (int i = 0; i < PROFILE_NAME_CHARS - 1; i++)
        longest[i] = L'a' + i % 26;
    longest[PROFILE_NAME_CHARS - 1] = 0;
    ASSERT_TRUE(WriteCurrentProfileName(longest));
    ReadCurrentProfileName(name);
    EXPECT_STREQ(longest, name);

    ASSERT_TRUE(WriteCurrentProfileName(L""));
    ReadCurrentProfileName(name);
    EXPECT_STREQ(L"", name);
}

TEST_F(ProfileStore, DeletingTheCurrentProfileClearsIt)
{
    QLRDEVMODE dm = Record(FORMAT_BMP);
    ASSERT_TRUE(WriteProfile(L"qlr test A", &dm));
    ASSERT_TRUE(WriteProfile(L"qlr test B", &dm));
    ASSERT_TRUE(WriteCurrentProfileName(L"qlr test A"));
    WCHAR name[PROFILE_NAME_CHARS];

    EXPECT_TRUE(DeleteProfile(L"qlr test B"));
    ReadCurrentProfileName(name);
    EXPECT_STREQ(L"qlr test A", name);

    EXPECT_TRUE(DeleteProfile(L"QLR TEST A"));
    EXPECT_FALSE(ProfileExists(L"qlr test A"));
    ReadCurrentProfileName(name);
    EXPECT_STREQ(L"", name);
    EXPECT_FALSE(DeleteProfile(L"qlr test A"));
}

TEST_F(ProfileStore, RenameKeepsTheCurrentProfileAndRefusesTakenNames)
{
    QLRDEVMODE dm = Record(FORMAT_JPEG);
    ASSERT_TRUE(WriteProfile(L"qlr test A", &dm));
    dm = Record(FORMAT_DCX);
    ASSERT_TRUE(WriteProfile(L"qlr test B", &dm));
    ASSERT_TRUE(WriteCurrentProfileName(L"qlr test A"));
    WCHAR name[PROFILE_NAME_CHARS];

    EXPECT_FALSE(RenameProfile(L"qlr test A", L"qlr test B"));
    QLRDEVMODE read;
    ASSERT_TRUE(ReadProfile(L"qlr test B", &read));
    EXPECT_EQ(FORMAT_DCX, read.iOutputFormat);
    EXPECT_TRUE(ProfileExists(L"qlr test A"));

    EXPECT_TRUE(RenameProfile(L"qlr test A", L"QLR TEST C"));
    EXPECT_FALSE(ProfileExists(L"qlr test A"));
    ASSERT_TRUE(ReadProfile(L"QLR TEST C", &read));
    EXPECT_EQ(FORMAT_JPEG, read.iOutputFormat);
    ReadCurrentProfileName(name);
    EXPECT_STREQ(L"QLR TEST C", name);

    EXPECT_TRUE(RenameProfile(L"qlr test B", L"qlr test A"));
    ReadCurrentProfileName(name);
    EXPECT_STREQ(L"QLR TEST C", name) << "renaming another profile leaves the current one";

    // Only the letter case differs: nothing changes, the key keeps its case.
    EXPECT_TRUE(RenameProfile(L"QLR TEST C", L"qlr test c"));
    HKEY hKey;
    ASSERT_EQ(ERROR_SUCCESS, RegOpenKeyExW(HKEY_CURRENT_USER, PROFILE_KEY, 0, KEY_READ, &hKey));
    bool found = false;
    WCHAR sub[PROFILE_NAME_CHARS];
    for (DWORD i = 0, cch = PROFILE_NAME_CHARS; RegEnumKeyExW(hKey, i, sub, &cch, NULL, NULL, NULL, NULL) == ERROR_SUCCESS;
         i++, cch = PROFILE_NAME_CHARS)
        found |= lstrcmpW(sub, L"QLR TEST C") == 0;
    RegCloseKey(hKey);
    EXPECT_TRUE(found);

    EXPECT_FALSE(RenameProfile(L"no such qlr profile", L"qlr test B"));
    EXPECT_FALSE(ProfileExists(L"qlr test B"));
}

TEST_F(ProfileStore, FilesRoundTripTheStoredRecord)
{
    QLRDEVMODE dm = Record(FORMAT_GIF);
    dm.dmPublic.dmDriverVersion = 0x0100;
    lstrcpyW(dm.szComments, L"exported");
    StoreRaw(L"qlr test A", REG_BINARY, &dm, sizeof(dm));
    std::wstring path = TempFile(L"qlr-roundtrip.qlr");
    ASSERT_TRUE(ExportProfileFile(L"qlr test A", path.c_str()));

    std::vector<BYTE> file = ReadBytes(path);
    ASSERT_EQ(3748u, file.size());
    EXPECT_EQ(0, memcmp(file.data(), "QLRP", 4));
    EXPECT_EQ(0x100u, *(DWORD *)&file[4]);
    EXPECT_STREQ(L"qlr test A", (const WCHAR *)&file[8]);
    for (size_t i = 8 + sizeof(L"qlr test A"); i < 264; i++)
        ASSERT_EQ(0, file[i]) << "byte " << i;
    QLRDEVMODE expected = dm;
    expected.dmPublic.dmDriverVersion = QLR_DRIVER_VERSION;
    EXPECT_EQ(0, memcmp(&expected, &file[264], sizeof(expected)));

    ASSERT_TRUE(DeleteProfile(L"qlr test A"));
    WCHAR name[PROFILE_NAME_CHARS] = L"";
    ASSERT_TRUE(ImportProfileFile(path.c_str(), name));
    EXPECT_STREQ(L"qlr test A", name);
    QLRDEVMODE read;
    ASSERT_TRUE(ReadProfile(L"qlr test A", &read));
    expected.m_bProfiled = TRUE;
    EXPECT_EQ(0, memcmp(&expected, &read, sizeof(read)));

    // Exporting onto an existing file replaces it.
    dm.iOutputFormat = FORMAT_DCX;
    StoreRaw(L"qlr test A", REG_BINARY, &dm, sizeof(dm));
    ASSERT_TRUE(ExportProfileFile(L"qlr test A", path.c_str()));
    EXPECT_EQ(FORMAT_DCX, ((QLRDEVMODE *)&ReadBytes(path)[264])->iOutputFormat);
    DeleteFileW(path.c_str());
}

TEST_F(ProfileStore, BadFilesChangeNothing)
{
    QLRDEVMODE dm = Record(FORMAT_BMP);
    ASSERT_TRUE(WriteProfile(L"qlr test B", &dm));
    std::wstring path = TempFile(L"qlr-bad.qlr");
    ASSERT_TRUE(ExportProfileFile(L"qlr test B", path.c_str()));
    const std::vector<BYTE> good = ReadBytes(path);
    ASSERT_EQ(3748u, good.size());
    ASSERT_TRUE(DeleteProfile(L"qlr test B"));

    struct { const char *what; void (*mutate)(std::vector<BYTE> &); } cases[] = {
        { "3747 bytes", [](std::vector<BYTE> &f) { f.pop_back(); } },
        { "3749 bytes", [](std::vector<BYTE> &f) { f.push_back(0); } },
        { "magic", [](std::vector<BYTE> &f) { f[3] = 'X'; } },
        { "version 257", [](std::vector<BYTE> &f) { f[4] = 1; f[5] = 1; } },
        { "empty name", [](std::vector<BYTE> &f) { f[8] = f[9] = 0; } },
        { "name without NUL", [](std::vector<BYTE> &f) { for (int i = 8; i < 264; i += 2) { f[i] = 'x'; f[i + 1] = 0; } } },
        { "backslash", [](std::vector<BYTE> &f) { f[8 + 2 * 3] = '\\'; } },
    };
    for (const auto &c : cases) {
        std::vector<BYTE> bad = good;
        c.mutate(bad);
        WriteBytes(path, bad);
        WCHAR name[PROFILE_NAME_CHARS] = L"untouched";
        EXPECT_FALSE(ImportProfileFile(path.c_str(), name)) << c.what;
        EXPECT_FALSE(ProfileExists(L"qlr test B")) << c.what;
        HKEY hKey;
        EXPECT_NE(ERROR_SUCCESS, RegOpenKeyExW(HKEY_CURRENT_USER, PROFILE_KEY L"\\qlr", 0, KEY_READ, &hKey)) << c.what;
    }

    // A record of another driver version is imported like any other.
    std::vector<BYTE> older = good;
    older[264 + 220] = 0x00; older[264 + 221] = 0x20;
    WriteBytes(path, older);
    WCHAR name[PROFILE_NAME_CHARS];
    EXPECT_TRUE(ImportProfileFile(path.c_str(), name));
    EXPECT_TRUE(ProfileExists(L"qlr test B"));
}

TEST_F(ProfileStore, NamesOutsideTheLimitsAreRefused)
{
    QLRDEVMODE dm = Record(FORMAT_BMP);
    EXPECT_FALSE(WriteProfile(L"", &dm));
    WCHAR tooLong[PROFILE_NAME_CHARS + 1];
    for (int i = 0; i < PROFILE_NAME_CHARS; i++)
        tooLong[i] = L'x';
    tooLong[PROFILE_NAME_CHARS] = 0;
    EXPECT_FALSE(WriteProfile(tooLong, &dm));
    EXPECT_FALSE(ProfileExists(tooLong));
    EXPECT_FALSE(ProfileExists(L""));
}

}  // namespace
