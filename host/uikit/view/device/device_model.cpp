// host/uikit/view/device/device_model.cpp: the devices that the host can be.

#include "host/uikit/view/device/device_model.hpp"

namespace wispen::uikit {

namespace {

using graphics::Idiom;

DeviceModel phone(const char* name, const char* description, Size size, double scale, EdgeInsets portrait,
                  EdgeInsets landscape, double radius) {
  return {name, description, Idiom::Phone, size, scale, portrait, landscape, radius, Orientation::Portrait};
}

DeviceModel pad(const char* name, const char* description, Size size, EdgeInsets safe_area, double radius) {
  return {name, description, Idiom::Pad, size, 2, safe_area, safe_area, radius, Orientation::Portrait};
}

}  // namespace

const std::vector<DeviceModel>& device_models() {
  // Bottom insets leave room for the bar that leads home; devices with a button have none.
  static const std::vector<DeviceModel> kModels{
      phone("phone", "6.1 inch, notch", {390, 844}, 3, {47, 0, 34, 0}, {0, 47, 21, 47}, 47),
      phone("phone-small", "4.7 inch, home button", {375, 667}, 2, {20, 0, 0, 0}, {0, 0, 0, 0}, 0),
      phone("phone-mini", "5.4 inch, notch", {375, 812}, 3, {50, 0, 34, 0}, {0, 50, 21, 50}, 44),
      phone("phone-wide", "6.1 inch, two pixels a point", {414, 896}, 2, {48, 0, 34, 0}, {0, 48, 21, 48}, 41),
      phone("phone-island", "6.1 inch, island", {393, 852}, 3, {59, 0, 34, 0}, {0, 59, 21, 59}, 55),
      phone("phone-large", "6.7 inch, notch", {428, 926}, 3, {47, 0, 34, 0}, {0, 47, 21, 47}, 53),
      phone("phone-island-large", "6.7 inch, island", {430, 932}, 3, {59, 0, 34, 0}, {0, 59, 21, 59}, 55),
      pad("pad", "10.2 inch, home button", {810, 1080}, {20, 0, 0, 0}, 0),
      pad("pad-mini", "8.3 inch", {744, 1133}, {24, 0, 20, 0}, 21),
      pad("pad-11", "11 inch", {834, 1194}, {24, 0, 20, 0}, 18),
      pad("pad-13", "12.9 inch", {1024, 1366}, {24, 0, 20, 0}, 18),
  };
  return kModels;
}

const DeviceModel* find_device(std::string_view name) {
  for (const DeviceModel& model : device_models()) {
    if (model.name == name) return &model;
  }
  return nullptr;
}

std::string device_names() {
  std::string names;
  for (const DeviceModel& model : device_models()) {
    if (!names.empty()) names += ", ";
    names += model.name;
  }
  return names;
}

}  // namespace wispen::uikit
