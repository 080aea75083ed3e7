// host/core/spawn.hpp: starting programs of the device root, and reaping them one by one.
#pragma once

#include <sys/types.h>

#include <string>

namespace wispen {

/// Starts the program at `path` on the phone, looked up below the current root; nothing outside it runs.
/// Both vectors end with null; a null environment is an empty one. The program inherits standard input,
/// output and error and no other descriptor, and default signals. Gives 0 and the process id, or an
/// errno value: ENOENT without a root or a program, EACCES for what may not be executed.
int spawn_below_root(pid_t* process, const char* path, char* const argv[], char* const environment[]);

/// Waits for one child and no other: Foundation reaps children of its own in this process, so nobody
/// here may ever wait for "any". As waitpid(2), and goes on after a signal.
pid_t reap(pid_t process, int* status, int options);

}  // namespace wispen

extern "C" {

/// posix_spawn with the phone's contract. File actions and attributes are not offered: EINVAL unless null.
[[gnu::visibility("default")]] int wispen_platform_posix_spawn(pid_t* process, const char* path,
                                                               const void* file_actions,
                                                               const void* attributes, char* const argv[],
                                                               char* const environment[]);

/// waitpid with the phone's numbers (no hang 1, untraced 2, exited 4), for processes started by the
/// function above. Anything else, and every id that is not positive, gives -1 and ECHILD at once.
[[gnu::visibility("default")]] pid_t wispen_platform_waitpid(pid_t process, int* status, int options);
}
