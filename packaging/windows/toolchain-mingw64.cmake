# Cross-compiles for Windows x86-64 with Debian's mingw-w64 (posix threads).
# QT_WIN_PREFIX: the Qt for Windows to build against; it is not needed to build that Qt itself.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_SYSTEM_VERSION 10.0)

# The flavour is named outright: the plain name may point to -win32, whose libstdc++ has no std::thread.
set(_triple x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${_triple}-gcc-posix)
set(CMAKE_CXX_COMPILER ${_triple}-g++-posix)
set(CMAKE_RC_COMPILER ${_triple}-windres)
set(CMAKE_AR /usr/bin/${_triple}-gcc-ar-posix CACHE FILEPATH "")
set(CMAKE_RANLIB /usr/bin/${_triple}-gcc-ranlib-posix CACHE FILEPATH "")
set(CMAKE_STRIP /usr/bin/${_triple}-strip CACHE FILEPATH "")

# try_compile() reads this file anew in a scratch project, which must know the folder too.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES QT_WIN_PREFIX)

# Libraries and headers come from the target only, programs from the host only.
set(CMAKE_FIND_ROOT_PATH /usr/${_triple})
if(QT_WIN_PREFIX)
    list(PREPEND CMAKE_FIND_ROOT_PATH "${QT_WIN_PREFIX}")
    list(PREPEND CMAKE_PREFIX_PATH "${QT_WIN_PREFIX}")
endif()
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
# pkg-config would find the host's libraries.
set(PKG_CONFIG_EXECUTABLE "" CACHE FILEPATH "" FORCE)

# moc, rcc, uic, lrelease: the host's own Qt, which must be of the target's version.
set(QT_HOST_PATH /usr CACHE PATH "")
set(QT_HOST_PATH_CMAKE_DIR /usr/lib/x86_64-linux-gnu/cmake CACHE PATH "")
