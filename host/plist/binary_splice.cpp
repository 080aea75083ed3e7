#include "host/plist/binary_splice.hpp"

#include <algorithm>
#include <utility>
#include <vector>

#include "host/plist/big_endian.hpp"
#include "host/plist/binary_writer.hpp"

namespace wispen::plist {

namespace {

/// A reference that the new root makes: to a new object when the top bit is set, else to one of the file's.
constexpr std::uint32_t kNew = std::uint32_t{1} << 31;

/// What a number of the file stands for afterwards; from kFirstNew on, an index of a new object.
constexpr std::uint32_t kUnused = 0;
constexpr std::uint32_t kKept = 1;
constexpr std::uint32_t kRoot = 2;
constexpr std::uint32_t kFirstNew = 3;

class BinarySplicer {
 public:
  BinarySplicer(const BinaryContents& contents, ChangeSet& changes)
      : contents_(contents),
        changes_(changes),
        offsets_(contents.offsets()),
        uses_(offsets_.size(), kUnused) {}

  std::string run() {
    change_entries();
    append_missing();
    uses_[contents_.root()] = kRoot;
    keep_all();
    number_new_objects();
    return write();
  }

 private:
  /// The new root's entries, in the old one's order. Of several with a changed key only the first stays.
  void change_entries() {
    const BinaryObject root = contents_.object(contents_.root());
    keys_.reserve(root.count + changes_.effective().size());
    values_.reserve(root.count + changes_.effective().size());
    contents_.append_references(keys_, root, 0, root.count);
    contents_.append_references(values_, root, root.count, root.count);
    std::size_t stay = 0;
    for (std::size_t i = 0; i < root.count; ++i) {
      if (ChangeSet::Effective* effective = changes_.find_in(contents_, keys_[i])) {
        const bool stays = effective->change->value && !effective->met;
        effective->met = true;
        if (!stays) continue;
        values_[i] = objects_.add(*effective->change->value) | kNew;
      }
      keys_[stay] = keys_[i];
      values_[stay++] = values_[i];
    }
    keys_.resize(stay);
    values_.resize(stay);
  }

  void append_missing() {
    for (const ChangeSet::Effective& effective : changes_.effective()) {
      if (effective.met || !effective.change->value) continue;
      keys_.push_back(objects_.add_string(effective.change->key) | kNew);
      values_.push_back(objects_.add(*effective.change->value) | kNew);
    }
  }

  /// Marks the objects of the file that the new root names, and all that these hold.
  void keep_all() {
    for (const std::uint32_t reference : keys_) keep(reference);
    for (const std::uint32_t reference : values_) keep(reference);
    while (!waiting_.empty()) {
      const BinaryObject object = contents_.object(waiting_.back());
      waiting_.pop_back();
      for (std::uint64_t i = 0; i < object.references(); ++i) keep(contents_.reference(object, i));
    }
  }
  void keep(std::uint32_t reference) {
    if ((reference & kNew) != 0 || uses_[reference] != kUnused) return;
    uses_[reference] = kKept;
    if (contents_.is_container_at(offsets_[reference])) waiting_.push_back(reference);
  }

  /// New objects take the numbers that have become free, so that a list written again and again stays small.
  void number_new_objects() {
    std::size_t next = 0;
    for (std::size_t i = 0; i < objects_.all().size(); ++i) {
      while (next < uses_.size() && uses_[next] != kUnused) ++next;
      if (next == uses_.size()) uses_.push_back(kUnused);
      uses_[next] = kFirstNew + static_cast<std::uint32_t>(i);
      numbers_.push_back(static_cast<std::uint32_t>(next));
    }
    while (uses_.back() == kUnused) uses_.pop_back();
    reference_size_ = std::max(contents_.trailer().reference_size, bytes_for(uses_.size()));
  }

  std::string write() {
    bytes_.reserve(contents_.source().size() + 256);
    bytes_ = contents_.source().substr(0, kHeaderSize);
    std::vector<std::uint32_t> offsets;
    offsets.reserve(uses_.size());
    for (std::size_t number = 0; number < uses_.size(); ++number) {
      // A number without an object still needs an entry in the table: the first object's place will do.
      const std::size_t offset = uses_[number] == kUnused ? kHeaderSize : bytes_.size() + run_.size();
      offsets.push_back(static_cast<std::uint32_t>(offset));
      write_object(static_cast<Node>(number));
    }
    flush();
    finish_binary(bytes_, offsets, reference_size_, contents_.root());
    return std::move(bytes_);
  }

  void write_object(Node number) {
    const std::uint32_t use = uses_[number];
    if (use == kKept) {
      write_kept(number);
    } else if (use == kRoot) {
      flush();
      append_object_header(bytes_, Marker::Map, keys_.size());
      append_references(keys_);
      append_references(values_);
    } else if (use != kUnused) {
      write_new(objects_.all()[use - kFirstNew]);
    }
  }

  void write_kept(Node number) {
    if (reference_size_ != contents_.trailer().reference_size &&
        contents_.is_container_at(offsets_[number])) {
      flush();
      const BinaryObject object = contents_.object(number);
      bytes_ += contents_.source().substr(object.begin, object.payload - object.begin);
      for (std::uint64_t i = 0; i < object.references(); ++i) {
        append_big_endian(bytes_, contents_.reference(object, i), reference_size_);
      }
      return;
    }
    // Objects mostly stand in the order of their numbers: whole stretches are copied at once.
    const std::string_view object = contents_.bytes_at(offsets_[number], number);
    if (run_.data() + run_.size() != object.data()) {
      flush();
      run_ = object;
    } else {
      run_ = {run_.data(), run_.size() + object.size()};
    }
  }

  void write_new(const NewObject& object) {
    flush();
    if (!object.is_container()) {
      bytes_ += object.bytes;
      return;
    }
    const std::size_t references = object.references.size();
    append_object_header(bytes_, object.marker, object.marker == Marker::Map ? references / 2 : references);
    append_all_big_endian(bytes_, object.references, reference_size_,
                          [this](std::uint32_t reference) { return numbers_[reference]; });
  }

  void append_references(const std::vector<std::uint32_t>& references) {
    append_all_big_endian(bytes_, references, reference_size_, [this](std::uint32_t reference) {
      return (reference & kNew) != 0 ? numbers_[reference & ~kNew] : reference;
    });
  }

  void flush() {
    bytes_ += run_;
    run_ = {};
  }

  static constexpr std::size_t kHeaderSize = 8;

  const BinaryContents& contents_;
  ChangeSet& changes_;
  const std::vector<std::uint32_t> offsets_;  ///< of the file's objects
  std::vector<std::uint32_t> uses_;
  std::vector<Node> waiting_;  ///< containers that are kept and not looked into yet
  std::vector<std::uint32_t> keys_;
  std::vector<std::uint32_t> values_;
  NewObjects objects_;
  std::vector<std::uint32_t> numbers_;  ///< of the new objects
  std::uint8_t reference_size_ = 0;
  std::string bytes_;
  std::string_view run_;  ///< bytes of the file still to be copied
};

}  // namespace

std::string splice_binary(const BinaryContents& contents, ChangeSet changes) {
  return BinarySplicer(contents, changes).run();
}

}  // namespace wispen::plist
