// host/foundation/written_files.hpp: what Foundation writes, and where.
#pragma once

namespace wispen {

/// Whatever Foundation writes, makes, moves or removes for the bundle by a path is below the device root.
/// What it writes by itself goes to DeviceRoot::kNowhere, and stays there.
void install_written_files();

}  // namespace wispen
