// Whole files in and out, for tests that write what a user might import.
#ifndef QLR_TESTS_FILES_H
#define QLR_TESTS_FILES_H

#include <windows.h>
#include <string.h>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

inline std::wstring Beside(LPCWSTR name)
{
    WCHAR path[MAX_PATH];
    GetModuleFileNameW(NULL, path, MAX_PATH);
    lstrcpyW(wcsrchr(path, L'\\') + 1, name);
    return path;
}

inline std::vector<BYTE> ReadBytes(const std::wstring &path)
{
    std::ifstream f(path.c_str(), std::ios::binary);
    return std::vector<BYTE>(std::istreambuf_iterator<char>(f), {});
}

inline void WriteBytes(const std::wstring &path, const std::vector<BYTE> &bytes)
{
    std::ofstream(path.c_str(), std::ios::binary).write((const char *)bytes.data(), bytes.size());
}

// A profile file as the format lays it out: magic, version 256, the name ended with NULs, the settings record.
inline std::vector<BYTE> FileOf(LPCWSTR name, const std::vector<BYTE> &record)
{
    std::vector<BYTE> f(3748, 0);
    memcpy(&f[0], "QLRP\0\1", 6);
    memcpy(&f[8], name, wcslen(name) * 2);
    memcpy(&f[264], record.data(), 3484);
    return f;
}

// A key's unnamed value set; read back as its bytes (none if there is none), or as a string up to its NUL.
inline void SetValue(HKEY root, const std::wstring &key, DWORD type, const void *data, size_t cb)
{
    HKEY h;
    RegCreateKeyExW(root, key.c_str(), 0, NULL, 0, KEY_WRITE, NULL, &h, NULL);
    RegSetValueExW(h, NULL, 0, type, (const BYTE *)data, (DWORD)cb);
    RegCloseKey(h);
}

inline std::vector<BYTE> ValueOf(HKEY root, const std::wstring &key)
{
    std::vector<BYTE> v(8192);
    DWORD cb = (DWORD)v.size();
    v.resize(RegGetValueW(root, key.c_str(), NULL, RRF_RT_ANY | RRF_NOEXPAND, NULL, v.data(), &cb) ? 0 : cb);
    return v;
}

inline std::wstring StringOf(HKEY root, const std::wstring &key)
{
    const std::vector<BYTE> v = ValueOf(root, key);
    return std::wstring((LPCWSTR)v.data(), wcsnlen((LPCWSTR)v.data(), v.size() / 2));
}

// Points the HTML help control's class at a library (the recorder fakehh.dll beside the test program); returns the old.
inline std::wstring SetHelpControl(const std::wstring &path)
{
    const std::wstring key = L"CLSID\\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}\\InprocServer32";
    const std::wstring old = StringOf(HKEY_CLASSES_ROOT, key);
    SetValue(HKEY_CLASSES_ROOT, key, REG_SZ, path.c_str(), (path.size() + 1) * sizeof(WCHAR));
    return old;
}

#endif
