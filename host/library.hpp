// host/library.hpp: what libwispenhost.so says about itself.
#pragma once

extern "C" {

/// The library's version, "major.minor.patch". Never null, never freed.
[[gnu::visibility("default")]] const char* wispen_host_version();
}
