// wispen/drive_command.cpp: wispen drive: uses the pages as a script says.

#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>

#include "host/wispen_host.h"
#include "wispen/commands.hpp"
#include "wispen/drive/driver.hpp"
#include "wispen/output.hpp"

namespace wispen::program {

namespace {

Result<std::string> script_text(const std::string& file) {
  if (file == "-") return std::string(std::istreambuf_iterator<char>(std::cin), {});
  std::ifstream stream(file, std::ios::binary);
  if (!stream) return Error{"the script " + file + " cannot be read"};
  return std::string(std::istreambuf_iterator<char>(stream), {});
}

}  // namespace

namespace {

/// Does one step and prints its answer. Gives kFailed, with the picture of the moment, where it fails.
int do_step(Driver& driver, const Step& step, const DriveOptions& what) {
  const auto answer = driver.run(step);
  Json line{{"line", step.line}, {"step", step.source}, {"ok", static_cast<bool>(answer)}};
  if (answer) {
    line.update(*answer);
    std::printf("%s\n", line.dump().c_str());
    print_problems();  // of this step: a write that failed, say
    return output_is_written() ? kDone : kFailed;
  }
  line["error"] = answer.error().message;
  if (wispen_host_snapshot(what.failure_picture.c_str(), 0, 0) != 0) line["picture"] = what.failure_picture;
  std::printf("%s\n", line.dump().c_str());
  std::fflush(stdout);
  print_problems();
  return fail(what.script + ", line " + std::to_string(step.line) + ": " + answer.error().message);
}

/// Steps as they come, until there are no more.
int drive_along(Driver& driver, const DriveOptions& what) {
  int number = 0;
  for (std::string line; std::getline(std::cin, line);) {
    ++number;
    auto steps = read_script(line);
    if (!steps) {
      fail(what.script + ", " + steps.error().message);
      return kWrongUse;
    }
    for (Step& step : *steps) {
      step.line = number;
      if (const int status = do_step(driver, step, what); status != kDone) return status;
    }
  }
  return kDone;
}

}  // namespace

int drive(const CommonOptions& options, const DriveOptions& what) {
  std::vector<Step> steps;
  if (!what.follow) {
    const auto text = script_text(what.script);
    if (!text) return fail(text.error().message);
    auto read = read_script(*text);
    if (!read) {
      fail(what.script + ", " + read.error().message);
      return kWrongUse;
    }
    steps = *std::move(read);
  } else if (what.script != "-") {
    fail("steps that come one by one come from standard input: the script is -");
    return kWrongUse;
  }
  const objc::AutoreleasePool pool;
  const auto session = Session::start_with_screen(options, what.look);
  if (!session) return kFailed;
  Driver driver(*session);
  if (what.follow) {
    if (wispen_host_follow_files(bundle_folder(options).c_str()) == 0) return fail(wispen_host_last_error());
    return drive_along(driver, what);
  }
  for (const Step& step : steps) {
    if (const int status = do_step(driver, step, what); status != kDone) return status;
  }
  print_problems();
  return kDone;
}

}  // namespace wispen::program
