// host/library.cpp: the one source that belongs to the library itself and to no floor.

#include "host/library.hpp"

const char* wispen_host_version() { return WISPEN_VERSION; }
