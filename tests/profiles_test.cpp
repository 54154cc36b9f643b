// The profile store and profile files on the real registry of the test
// prefix.  What a step leaves behind is read back from the registry itself:
// the current-name value byte for byte and every test profile's key spelling
// and record.
#include <gtest/gtest.h>
#include <string>
#include <vector>
#include "profiles/profiles.h"
#include "files.h"
#include "guarded.h"

namespace {

const LPCWSTR KEY = L"Software\\Moravel\\Quillora\\Profile";
const DWORD RECORD = 3484, AT_PROFILED = 3480, AT_DRIVER_VERSION = 66, NAME_CHARS = 128;

// A record no module function made: byte i is i * seed, so each seed is told
// apart by its bytes.
std::vector<BYTE> Pattern(BYTE seed)
{
    std::vector<BYTE> r(RECORD);
    for (DWORD i = 0; i < RECORD; i++)
        r[i] = (BYTE)(i * seed);
    r[AT_DRIVER_VERSION] = 0x46;    // as the store reads every record back
    r[AT_DRIVER_VERSION + 1] = 0x02;
    return r;
}

std::vector<BYTE> AsStored(std::vector<BYTE> r)
{
    memset(&r[AT_PROFILED], 0, 4);
    r[AT_PROFILED] = 1;
    return r;
}

void StoreRaw(LPCWSTR name, DWORD type, const void *data, DWORD cb)
{
    SetValue(HKEY_CURRENT_USER, name[0] ? std::wstring(KEY) + L"\\" + name : KEY, type, data, cb);
}

std::vector<BYTE> ValueOf(const std::wstring &path)
{
    return ValueOf(HKEY_CURRENT_USER, path);
}

// The stored current name (Wine adds the NUL the module leaves out), and
// every key under the profile key with its value: what a refused operation
// must leave alone.
std::wstring CurrentRaw()
{
    std::vector<BYTE> v = ValueOf(KEY);
    std::wstring name((const WCHAR *)v.data(), v.size() / 2);
    return name.substr(0, name.find_last_not_of(L'\0') + 1);
}

std::wstring Image(bool onlyTests = false)
{
    std::wstring image = L"[" + CurrentRaw() + L"]";
    HKEY h;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, KEY, 0, KEY_READ, &h))
        return image;
    WCHAR name[256];
    for (DWORD i = 0, cch = 256; !RegEnumKeyExW(h, i, name, &cch, NULL, NULL, NULL, NULL); i++, cch = 256) {
        if (onlyTests && _wcsnicmp(name, L"qlr test", 8))
            continue;
        std::vector<BYTE> v = ValueOf(std::wstring(KEY) + L"\\" + name);
        int seed = 0;
        for (int s = 1; s < 8 && !seed; s++)
            seed = v == AsStored(Pattern((BYTE)s)) ? s : 0;
        image += L" " + std::wstring(name) + L"=" + (seed ? std::to_wstring(seed) : std::to_wstring(v.size()) + L"b");
    }
    RegCloseKey(h);
    return image;
}

// 127 characters, the longest name a profile may have.
std::wstring Longest()
{
    return L"qlr test " + std::wstring(118, L'x');
}

class Profiles : public ::testing::Test {
protected:
    std::vector<BYTE> savedCurrent = ValueOf(KEY);
    std::wstring path = TempFile(L"qlr-profile.qlr");
    void Clear()
    {
        for (std::wstring n : { L"qlr test A", L"qlr test B", L"qlr test C", L"qlr test \u00c9", Longest().c_str() })
            RegDeleteKeyW(HKEY_CURRENT_USER, (std::wstring(KEY) + L"\\" + n).c_str());
    }
    void SetUp() override
    {
        Clear();
        StoreRaw(L"", REG_SZ, L"", 0);
    }
    void TearDown() override
    {
        Clear();
        StoreRaw(L"", REG_SZ, savedCurrent.data(), (DWORD)savedCurrent.size());
        DeleteFileW(path.c_str());
    }
};

enum Op { OP_WRITE, OP_CURRENT, OP_RENAME, OP_DELETE, OP_EXISTS };

TEST_F(Profiles, StoreOperationsLeaveTheRegistryAsExpected)
{
    const std::wstring longName = Longest(), tooLong = longName + L"x";
    const LPCWSTR longest = longName.c_str();
    struct { Op op; LPCWSTR a, b; int seed; BOOL result; std::wstring image; } steps[] = {
        { OP_EXISTS, L"qlr test A", NULL, 0, FALSE, L"[]" },
        { OP_WRITE, L"qlr test A", NULL, 1, TRUE, L"[] qlr test A=1" },
        { OP_WRITE, L"qlr test B", NULL, 2, TRUE, L"[] qlr test A=1 qlr test B=2" },
        { OP_WRITE, L"QLR TEST A", NULL, 3, TRUE, L"[] qlr test A=3 qlr test B=2" },
        { OP_EXISTS, L"QLR test a", NULL, 0, TRUE, L"[] qlr test A=3 qlr test B=2" },
        { OP_CURRENT, L"qlr test A", NULL, 0, TRUE, L"[qlr test A] qlr test A=3 qlr test B=2" },
        // Another spelling of an existing profile is stored as its key spells
        // it, so that the pages, which match with case, still find it.
        { OP_CURRENT, L"QLR TEST A", NULL, 0, TRUE, L"[qlr test A] qlr test A=3 qlr test B=2" },
        { OP_RENAME, L"qlr test A", L"qlr TEST b", 0, FALSE, L"[qlr test A] qlr test A=3 qlr test B=2" },
        { OP_RENAME, L"no such qlr", L"qlr test C", 0, FALSE, L"[qlr test A] qlr test A=3 qlr test B=2" },
        { OP_RENAME, L"QLR TEST A", L"qlr test A", 0, TRUE, L"[qlr test A] qlr test A=3 qlr test B=2" },
        { OP_RENAME, L"qlr test a", L"qlr test C", 0, TRUE, L"[qlr test C] qlr test B=2 qlr test C=3" },
        { OP_RENAME, L"qlr test B", L"qlr test \u00c9", 0, TRUE, L"[qlr test C] qlr test C=3 qlr test \u00c9=2" },
        { OP_CURRENT, L"qlr test \u00e9", NULL, 0, TRUE, L"[qlr test \u00c9] qlr test C=3 qlr test \u00c9=2" },
        { OP_CURRENT, L"qlr test none", NULL, 0, TRUE, L"[qlr test none] qlr test C=3 qlr test \u00c9=2" },
        { OP_CURRENT, L"qlr test C", NULL, 0, TRUE, L"[qlr test C] qlr test C=3 qlr test \u00c9=2" },
        { OP_DELETE, L"qlr test \u00c9", NULL, 0, TRUE, L"[qlr test C] qlr test C=3" },
        { OP_DELETE, L"QLR TEST C", NULL, 0, TRUE, L"[]" },
        { OP_DELETE, L"qlr test C", NULL, 0, FALSE, L"[]" },
        { OP_WRITE, L"", NULL, 1, FALSE, L"[]" },
        { OP_WRITE, longest, NULL, 1, TRUE, L"[] " + longName + L"=1" },
        { OP_CURRENT, longest, NULL, 0, TRUE, L"[" + longName + L"] " + longName + L"=1" },
        { OP_DELETE, longest, NULL, 0, TRUE, L"[]" },
        { OP_WRITE, tooLong.c_str(), NULL, 1, FALSE, L"[]" },
    };
    for (size_t i = 0; i < ARRAYSIZE(steps); i++) {
        const auto &s = steps[i];
        std::vector<BYTE> record = Pattern((BYTE)s.seed);
        BOOL result = FALSE;
        switch (s.op) {
        case OP_WRITE:
            result = WriteProfile(s.a, (PQLRDEVMODE)record.data());
            EXPECT_EQ(1, record[AT_PROFILED]) << "step " << i << ": the caller's record is marked saved";
            break;
        case OP_CURRENT: result = WriteCurrentProfileName(s.a); break;
        case OP_RENAME: result = RenameProfile(s.a, s.b); break;
        case OP_DELETE: result = DeleteProfile(s.a); break;
        case OP_EXISTS: result = ProfileExists(s.a); break;
        }
        EXPECT_EQ(s.result, result) << "step " << i;
        EXPECT_EQ(s.image, Image(true)) << "step " << i;
        WCHAR name[NAME_CHARS] = L"junk";
        ReadCurrentProfileName(name);
        EXPECT_EQ(CurrentRaw(), name) << "step " << i;
    }
}

TEST_F(Profiles, OnlyAWholeBinaryRecordReadsAndItsDriverVersionIsOurs)
{
    const DWORD types[] = { REG_NONE, REG_SZ, REG_EXPAND_SZ, REG_BINARY, REG_DWORD, REG_MULTI_SZ, REG_QWORD };
    std::vector<BYTE> bytes = Pattern(5);
    bytes.resize(8192, 0x5A);
    Guarded out(RECORD, 0xCC);
    for (DWORD type : types)
        for (DWORD cb = 0; cb <= bytes.size(); cb += cb < 64 || (cb >= RECORD - 4 && cb <= RECORD + 4) ? 1 : 61) {
            StoreRaw(L"qlr test A", type, bytes.data(), cb);
            bool whole = type == REG_BINARY && cb == RECORD;
            EXPECT_EQ(whole, ReadProfile(L"qlr test A", out.as<QLRDEVMODE>()) != FALSE) << type << ", " << cb;
        }
    // Whatever driver wrote the record, it is read whole; only the version
    // of the driver that reads it changes.
    for (std::vector<BYTE> record : { Pattern(7), std::vector<BYTE>(RECORD, 0) }) {
        record[AT_DRIVER_VERSION] = 0x00;
        StoreRaw(L"qlr test A", REG_BINARY, record.data(), RECORD);
        ASSERT_TRUE(ReadProfile(L"qlr test A", out.as<QLRDEVMODE>()));
        record[AT_DRIVER_VERSION] = 0x46;
        record[AT_DRIVER_VERSION + 1] = 0x02;
        EXPECT_EQ(0, memcmp(record.data(), out.p, RECORD));
    }
    EXPECT_FALSE(ReadProfile(L"qlr test B", out.as<QLRDEVMODE>()));

    // The current name, stored at every length and without a NUL, comes back
    // terminated inside a 128-character buffer.
    Guarded name(NAME_CHARS * sizeof(WCHAR), 0xCC);
    std::vector<WCHAR> letters(600, L'q');
    for (DWORD type : types)
        for (DWORD cb = 0; cb <= 1200; cb += cb < 300 ? 1 : 97) {
            StoreRaw(L"", type, letters.data(), cb);
            ReadCurrentProfileName(name.as<WCHAR>());
            size_t len = wcsnlen(name.as<WCHAR>(), NAME_CHARS);
            EXPECT_EQ(cb > 256 ? 0 : std::min<size_t>(cb / 2, 127), len) << type << ", " << cb;
        }
}

TEST_F(Profiles, FilesCarryTheStoredRecordBetweenMachines)
{
    std::vector<BYTE> record = Pattern(3);
    record[AT_DRIVER_VERSION] = 0x10;   // an older driver's record
    StoreRaw(L"qlr test A", REG_BINARY, record.data(), RECORD);
    WriteBytes(path, std::vector<BYTE>(5000, 0xEE));
    ASSERT_TRUE(ExportProfileFile(L"qlr test A", path.c_str()));
    EXPECT_TRUE(FileOf(L"qlr test A", Pattern(3)) == ReadBytes(path)) << "the file is exactly the exported profile";

    DeleteFileW(path.c_str());
    EXPECT_FALSE(ExportProfileFile(L"qlr test B", path.c_str()));
    EXPECT_EQ(INVALID_FILE_ATTRIBUTES, GetFileAttributesW(path.c_str()));

    // Imported whole, whatever driver wrote the record (its signature and
    // private version are pattern bytes), and stored marked.
    std::vector<BYTE> file = FileOf(L"qlr test B", Pattern(3));
    memcpy(&file[8 + 2 * 11], L"after the NUL", 26);
    WriteBytes(path, file);
    WCHAR name[NAME_CHARS] = L"";
    ASSERT_TRUE(ImportProfileFile(path.c_str(), name));
    EXPECT_STREQ(L"qlr test B", name);
    EXPECT_EQ(L"[] qlr test A=3484b qlr test B=3", Image(true));

    // Damaged files are refused before anything is stored: sizes, magic and
    // version bytes, backslashes, an empty name, a name without its NUL.
    const std::wstring before = Image();
    const std::vector<BYTE> good = FileOf(L"qlr test C", record);
    std::vector<std::vector<BYTE>> bad;
    for (size_t size : { 0, 1, 264, 3747, 3749, 4096 })
        bad.push_back(good), bad.back().resize(size);
    for (size_t at = 0; at < 8; at++)
        for (int value = 0; value < 256; value += 15)
            if (value != good[at])
                bad.push_back(good), bad.back()[at] = (BYTE)value;
    for (size_t at : { 8, 20, 26 })
        bad.push_back(good), bad.back()[at] = '\\';
    bad.push_back(good), bad.back()[8] = 0;
    bad.push_back(good);
    for (size_t i = 8; i < 264; i += 2)
        bad.back()[i] = 'n';
    for (size_t i = 0; i < bad.size(); i++) {
        WriteBytes(path, bad[i]);
        EXPECT_FALSE(ImportProfileFile(path.c_str(), name)) << "damaged file " << i;
        EXPECT_EQ(before, Image()) << "damaged file " << i;
    }
    DeleteFileW(path.c_str());
    EXPECT_FALSE(ImportProfileFile(path.c_str(), name)) << "no file";
}

}  // namespace
