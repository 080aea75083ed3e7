// home_screen/processes/backboardd.cpp: the process that the phone's home screen cannot live without.
//
// On the phone it brings the touches and the display; here the host does, and all that is left to play is to
// be there, and to take the home screen down when it ends (device_processes.cpp).

#include <unistd.h>

#include "host/processes/end_with_host.hpp"
#include "host/processes/stand_in_mark.hpp"

int main() {
  wispen::keep_stand_in_mark();
  wispen::end_with_host();
  while (true) pause();
}
