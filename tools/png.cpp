/*
 * The smallest honest PNG writer: RGB rows in stored (uncompressed) deflate
 * blocks.  Screenshots of a few hundred pixels square stay well under a
 * megabyte, and no compression library is needed.
 */
#include "png.h"
#include <vector>

static DWORD Crc32(const BYTE *p, size_t n, DWORD crc = 0)
{
    crc = ~crc;
    for (size_t i = 0; i < n; i++) {
        crc ^= p[i];
        for (int k = 0; k < 8; k++)
            crc = (crc >> 1) ^ (0xEDB88320u & (0 - (crc & 1)));
    }
    return ~crc;
}

static void PutBE(std::vector<BYTE> &out, DWORD v)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        out.push_back((BYTE)(v >> shift));
}

static void Chunk(std::vector<BYTE> &out, const char *type, const std::vector<BYTE> &data)
{
    PutBE(out, (DWORD)data.size());
    size_t start = out.size();
    out.insert(out.end(), type, type + 4);
    out.insert(out.end(), data.begin(), data.end());
    PutBE(out, Crc32(&out[start], out.size() - start));
}

static std::vector<BYTE> ZlibStored(const std::vector<BYTE> &raw)
{
    std::vector<BYTE> z = { 0x78, 0x01 };
    size_t pos = 0;
    do {
        size_t n = raw.size() - pos < 65535 ? raw.size() - pos : 65535;
        z.push_back(pos + n == raw.size() ? 1 : 0);
        z.push_back((BYTE)n);
        z.push_back((BYTE)(n >> 8));
        z.push_back((BYTE)~n);
        z.push_back((BYTE)(~n >> 8));
        z.insert(z.end(), raw.begin() + pos, raw.begin() + pos + n);
        pos += n;
    } while (pos < raw.size());
    DWORD a = 1, b = 0;
    for (BYTE c : raw) {
        a = (a + c) % 65521;
        b = (b + a) % 65521;
    }
    PutBE(z, (b << 16) | a);
    return z;
}

BOOL WritePng(LPCWSTR pszPath, const DWORD *pPixels, int width, int height)
{
    std::vector<BYTE> raw;
    raw.reserve((size_t)height * (width * 3 + 1));
    for (int y = 0; y < height; y++) {
        raw.push_back(0);       /* no filter */
        for (int x = 0; x < width; x++) {
            DWORD v = pPixels[(size_t)y * width + x];
            raw.push_back((BYTE)(v >> 16));
            raw.push_back((BYTE)(v >> 8));
            raw.push_back((BYTE)v);
        }
    }
    std::vector<BYTE> file = { 0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n' };
    std::vector<BYTE> header;
    PutBE(header, width);
    PutBE(header, height);
    header.insert(header.end(), { 8, 2, 0, 0, 0 });    /* 8-bit RGB */
    Chunk(file, "IHDR", header);
    Chunk(file, "IDAT", ZlibStored(raw));
    Chunk(file, "IEND", {});

    HANDLE h = CreateFileW(pszPath, GENERIC_WRITE, 0, NULL, CREATE_ALWAYS, 0, NULL);
    if (h == INVALID_HANDLE_VALUE)
        return FALSE;
    DWORD written = 0;
    BOOL ok = WriteFile(h, file.data(), (DWORD)file.size(), &written, NULL) && written == file.size();
    CloseHandle(h);
    return ok;
}
