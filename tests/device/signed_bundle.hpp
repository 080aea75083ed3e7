// tests/device/signed_bundle.hpp: the small bundle of signed code, loaded, and what the tests of it share.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>
#include <string>

#include "platform/Foundation.hpp"
#include "tests/device/loader/loaded_bundles.hpp"
#include "tests/device/loader/pointer_signing.hpp"

namespace wispen::testing {

/// The class that the bundle derives from and whose method it replaces.
class SignedHostShape : public objc::Authored<SignedHostShape, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"SignedHostShape"};
  using Authored::Authored;

  int area() const { return 3; }
  int edges() const { return 10; }
  static void define() {
    objc::Class<SignedHostShape>()
        .method<"area", &SignedHostShape::area>()
        .method<"edges", &SignedHostShape::edges>()
        .register_class();
  }
};

/// Loads an image and gives its functions by name.
class Bundle {
 public:
  explicit Bundle(const std::string& path) {
    SignedHostShape::define();
    const auto loaded = loader::load_bundle(path);
    if (!loaded) {
      ADD_FAILURE() << loaded.error().message;
      return;
    }
    handle_ = *loaded;
  }

  void* symbol(const char* name) const { return loader::symbol_of(handle_, name); }

  template <class R = int, class... A>
  R call(const char* name, A... arguments) const {
    const auto function = reinterpret_cast<R (*)(A...)>(symbol(name));
    if (function == nullptr) throw std::logic_error(std::string("the image has no ") + name);
    return function(arguments...);
  }

 private:
  void* handle_ = nullptr;
};

/// A function as signed code wants it.
template <class F>
F* for_signed_code(F* function) {
  return reinterpret_cast<F*>(
      loader::signed_pointer(reinterpret_cast<std::uint64_t>(function), loader::kFunctionSigning, nullptr));
}

/// Nothing here means anything where pointers are not signed.
class SignedCode : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(loader::keys_are_live()) << "this processor, or its emulator, has no keys";
  }
};

}  // namespace wispen::testing
