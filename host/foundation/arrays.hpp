// host/foundation/arrays.hpp: Foundation's arrays and vectors of handles, one from the other.
#pragma once

#include <vector>

#include "platform/Foundation.hpp"

namespace wispen {

template <class T>
NSMutableArray array_of(const std::vector<T>& objects) {
  NSMutableArray array = NSMutableArray::array();
  for (const T& object : objects) array.addObject(object);
  return array;
}

/// The elements as T, which they are, kept alive by the vector.
template <class T>
std::vector<T> objects_of(const NSArray& array) {
  std::vector<T> objects;
  const NSUInteger count = array.count();
  objects.reserve(count);
  for (NSUInteger i = 0; i < count; ++i) objects.push_back(array.objectAtIndex<T>(i));
  return objects;
}

}  // namespace wispen
