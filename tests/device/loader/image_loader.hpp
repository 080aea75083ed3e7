// tests/device/loader/image_loader.hpp: a Mach-O image, brought to life in a process of this machine.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "host/core/result.hpp"
#include "wispen/macho/fixups.hpp"
#include "wispen/macho/image.hpp"

namespace wispen::loader {

/// The address of an import of that library, or null.
using Resolver = std::function<void*(const macho::Import& import, std::string_view library)>;

/// Memory that holds an image.
class Mapping {
 public:
  Mapping() = default;
  Mapping(Mapping&& other) noexcept;
  Mapping& operator=(Mapping&& other) noexcept;
  ~Mapping();

  static Result<Mapping> reserve(std::size_t size);

  std::uintptr_t base() const { return base_; }
  std::size_t size() const { return size_; }
  bool holds(const void* address) const;

 private:
  std::uintptr_t base_ = 0;
  std::size_t size_ = 0;
};

/// Puts the image's segments into memory, applies its fixups and protects its pages; runs nothing. An import
/// that the resolver does not know is an error that names it, unless it is weak or its library is. What a
/// fixup wants signed is signed; a processor without keys takes no arm64e image.
Result<Mapping> map_image(const macho::Image& image, const Resolver& resolve);

/// Runs the initialisers of a mapped image, in the file's order. An error where one lies outside its code.
Result<void> run_initialisers(const macho::Image& image, const Mapping& mapping);

/// The slice of the file that this machine's processor runs: the signed one where it has keys, as a phone
/// does.
Result<std::string_view> slice_for_this_machine(std::string_view file);

}  // namespace wispen::loader
