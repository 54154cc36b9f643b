# The MSVC dialect for x64: clang-cl, llvm-rc and lld-link from Debian's
# LLVM, against the SDK Wine ships for PE programs (libwine-dev): its headers
# and its import libraries.  Only the driver module builds this way.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR AMD64)

set(QLR_LLVM /usr/lib/llvm-14/bin)
set(CMAKE_C_COMPILER   ${QLR_LLVM}/clang-cl)
set(CMAKE_CXX_COMPILER ${QLR_LLVM}/clang-cl)
set(CMAKE_C_COMPILER_TARGET   x86_64-pc-windows-msvc)
set(CMAKE_CXX_COMPILER_TARGET x86_64-pc-windows-msvc)
set(CMAKE_RC_COMPILER  ${QLR_LLVM}/llvm-rc)
set(CMAKE_LINKER       ${QLR_LLVM}/lld-link)
set(CMAKE_AR           ${QLR_LLVM}/llvm-lib)
# Nothing can run at configure time, and nothing needs to.
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)

set(QLR_WINE_SDK /usr/include/wine/wine)
set(QLR_IMPORT_LIBRARY_DIR /usr/lib/x86_64-linux-gnu/wine/x86_64-windows)

# Where Wine's headers part from the platform's, under clang-cl:
# - WINE_UNICODE_NATIVE: WCHAR is wchar_t, as on Windows; without it Wine's
#   winnt.h makes it char16_t in C++, and no L"" literal converts to LPWSTR.
# - winnt.h names its own inline InterlockedCompareExchange128 after the
#   compiler builtin _InterlockedCompareExchange128 (it expects only MSVC to
#   have the builtin), which clang-cl refuses as a redefinition; the macro
#   gives Wine's function a name of its own.
set(QLR_WINE_SDK_FLAGS "-imsvc ${QLR_WINE_SDK}/msvcrt -imsvc ${QLR_WINE_SDK}/windows -DWINE_UNICODE_NATIVE -D_InterlockedCompareExchange128=WineInterlockedCompareExchange128")
set(CMAKE_C_FLAGS_INIT   "${QLR_WINE_SDK_FLAGS}")
set(CMAKE_CXX_FLAGS_INIT "${QLR_WINE_SDK_FLAGS}")
# llvm-rc 14 ignores "#pragma code_page(65001)": the scripts are UTF-8.
set(CMAKE_RC_FLAGS_INIT "/C 65001 /I ${QLR_WINE_SDK}/msvcrt /I ${QLR_WINE_SDK}/windows")

# The C runtime is msvcrt.dll, reached through Wine's import library; the
# libraries clang-cl's objects name by default (msvcrt.lib, oldnames.lib) do
# not exist here.  Of the static part a Visual C++ build links with it, the
# module needs only _fltused (the marker every object using floating point
# refers to), which libwinecrt0.a defines alone in one member.  No manifest:
# a driver DLL has none.
set(CMAKE_SHARED_LINKER_FLAGS_INIT "/NODEFAULTLIB /MANIFEST:NO")
set(CMAKE_CXX_STANDARD_LIBRARIES
    "${QLR_IMPORT_LIBRARY_DIR}/libkernel32.a ${QLR_IMPORT_LIBRARY_DIR}/libmsvcrt.a ${QLR_IMPORT_LIBRARY_DIR}/libwinecrt0.a"
    CACHE STRING "The kernel and the C runtime, as Wine's SDK has them")
