// host/program/drive_command.cpp: wispen drive: uses the pages as a script says.

#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>

#include "host/program/commands.hpp"
#include "host/program/drive/driver.hpp"
#include "host/program/output.hpp"
#include "host/wispen_host.h"

namespace wispen::program {

namespace {

Result<std::string> script_text(const std::string& file) {
  if (file == "-") return std::string(std::istreambuf_iterator<char>(std::cin), {});
  std::ifstream stream(file, std::ios::binary);
  if (!stream) return Error{"the script " + file + " cannot be read"};
  return std::string(std::istreambuf_iterator<char>(stream), {});
}

}  // namespace

int drive(const CommonOptions& options, const DriveOptions& what) {
  const auto text = script_text(what.script);
  if (!text) return fail(text.error().message);
  const auto steps = read_script(*text);
  if (!steps) {
    fail(what.script + ", " + steps.error().message);
    return kWrongUse;
  }
  const objc::AutoreleasePool pool;
  const auto session = Session::start_with_screen(options, what.look);
  if (!session) return kFailed;
  Driver driver(*session);
  for (const Step& step : *steps) {
    const auto answer = driver.run(step);
    Json line{{"line", step.line}, {"step", step.source}, {"ok", static_cast<bool>(answer)}};
    if (answer) {
      line.update(*answer);
      std::printf("%s\n", line.dump().c_str());
      continue;
    }
    line["error"] = answer.error().message;
    if (wispen_host_snapshot(what.failure_picture.c_str(), 0, 0) != 0) line["picture"] = what.failure_picture;
    std::printf("%s\n", line.dump().c_str());
    print_problems();
    return fail(what.script + ", line " + std::to_string(step.line) + ": " + answer.error().message);
  }
  print_problems();
  return kDone;
}

}  // namespace wispen::program
