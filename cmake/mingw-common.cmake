# The posix thread model is the one Debian builds its mingw libstdc++ against
# with full <mutex>/<thread>; the DLL still links it statically.
set(CMAKE_C_COMPILER   ${QLR_TRIPLET}-gcc-posix)
set(CMAKE_CXX_COMPILER ${QLR_TRIPLET}-g++-posix)
set(CMAKE_RC_COMPILER  ${QLR_TRIPLET}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${QLR_TRIPLET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
