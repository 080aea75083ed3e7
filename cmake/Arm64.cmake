# The desktop's build for arm64 Linux, on a folder of Debian's libraries (tools/arm64-root), run by qemu-user: the
# machine on which the phone's own code can be executed without a phone.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)

get_filename_component(root ${CMAKE_CURRENT_LIST_DIR}/../build/arm64-root ABSOLUTE)
set(CMAKE_SYSROOT ${root})
set(CMAKE_FIND_ROOT_PATH ${root})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_SYSROOT_DIR} ${root})
set(ENV{PKG_CONFIG_LIBDIR} ${root}/usr/lib/aarch64-linux-gnu/pkgconfig:${root}/usr/share/pkgconfig)

# One processor's worth of emulation each; the libraries of the folder come before the machine's.
set(CMAKE_CROSSCOMPILING_EMULATOR /usr/bin/qemu-aarch64 -L ${root})
