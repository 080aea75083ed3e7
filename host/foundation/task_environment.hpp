// host/foundation/task_environment.hpp: what the programs find that Foundation's tasks start.
#pragma once

namespace wispen {

/// Gives every task the device root's own package database, by the variable that dpkg reads. What a task
/// writes to standard error is dropped where nobody asks for it: on a phone nobody sees it.
/// Waiting for a task ends when the task does.
void install_task_environment();

}  // namespace wispen
