#include "host/plist/xml_splice.hpp"

#include <utility>
#include <vector>

#include "host/plist/utf.hpp"
#include "host/plist/xml_writer.hpp"

namespace wispen::plist {

namespace {

bool is_space(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

class XmlSplicer {
 public:
  XmlSplicer(const XmlContents& contents, ChangeSet& changes)
      : contents_(contents), changes_(changes), source_(contents.source()) {}

  std::string run() {
    result_.reserve(source_.size() + 256);
    const std::vector<Node> changed = find_changed();
    detect_layout();
    for (const Node key : changed) change(key, *changes_.find_in(contents_, key));
    append_missing();
    copy_to(source_.size());
    return std::move(result_);
  }

 private:
  const XmlElement& root() const { return contents_.element(contents_.root()); }

  /// Where the white space begins that runs up to `offset`.
  std::size_t space_before(std::size_t offset) const {
    while (offset > 0 && is_space(source_[offset - 1])) --offset;
    return offset;
  }

  std::string_view between(std::size_t begin, std::size_t end) const {
    return source_.substr(begin, end - begin);
  }

  void copy_to(std::size_t offset) {
    result_ += between(copied_, offset);
    copied_ = offset;
  }

  /// Keys of the entries that changes are about; notes the last entry in passing.
  std::vector<Node> find_changed() {
    std::vector<Node> changed;
    const std::string* only = changes_.only_key();
    last_key_ = contents_.end(0);
    for (Position at = contents_.first(0); at != contents_.end(0); at = contents_.next(0, at)) {
      last_key_ = at;
      const bool found =
          only != nullptr ? contents_.key_is(at, *only) : changes_.find_in(contents_, at) != nullptr;
      if (found) changed.push_back(at);
    }
    return changed;
  }

  /// Copies the look of the last entry: what stands before its key and between key and value.
  void detect_layout() {
    const std::size_t open = space_before(root().begin);
    root_line_ = between(open, root().begin);
    if (!root_line_.starts_with('\n') && !root_line_.starts_with('\r')) root_line_ = "\n";
    if (last_key_ == contents_.end(0)) {
      before_key_ = std::string(root_line_) + "\t";
      before_value_ = before_key_;
    } else {
      const XmlElement& key = contents_.element(last_key_);
      before_key_ = between(space_before(key.begin), key.begin);
      const std::size_t value = contents_.element(last_key_ + 1).begin;
      before_value_ = between(space_before(value), value);
    }
    layout_.line = before_value_;
    layout_.step = before_key_.size() > root_line_.size() && before_key_.starts_with(root_line_)
                       ? before_key_.substr(root_line_.size())
                       : "\t";
  }

  /// Changes one entry; of several with the same key the first gets the value and the others go.
  void change(Node key, ChangeSet::Effective& effective) {
    const XmlElement& value = contents_.element(key + 1);
    if (effective.change->value && !effective.met) {
      copy_to(value.begin);
      append_xml(result_, *effective.change->value, layout_);
    } else {
      copy_to(space_before(contents_.element(key).begin));
    }
    copied_ = value.end;
    effective.met = true;
  }

  void append_missing() {
    bool any = false;
    for (const ChangeSet::Effective& effective : changes_.effective()) {
      if (effective.met || !effective.change->value) continue;
      if (!any) begin_appending();
      any = true;
      result_ += before_key_;
      append_xml_key(result_, effective.change->key);
      result_ += before_value_;
      append_xml(result_, *effective.change->value, layout_);
    }
    if (any) end_appending();
  }

  void begin_appending() {
    if (root().has(XmlElement::kEmpty)) {
      copy_to(root().begin);
      result_ += "<dict>";
      copied_ = root().end;
    } else if (last_key_ == contents_.end(0)) {
      // An empty dictionary: what it holds beside entries, a comment perhaps, stays in front.
      const std::string_view content = contents_.content(0);
      copy_to(space_before(static_cast<std::size_t>(content.data() + content.size() - source_.data())));
    } else {
      const std::size_t end = contents_.element(last_key_ + 1).end;
      if (end > copied_) copy_to(end);
    }
  }

  void end_appending() {
    if (root().has(XmlElement::kEmpty)) {
      result_ += root_line_;
      result_ += "</dict>";
    } else if (last_key_ == contents_.end(0) && !is_space(source_[copied_])) {
      result_ += root_line_;
    }
  }

  const XmlContents& contents_;
  ChangeSet& changes_;
  std::string_view source_;
  std::string result_;
  std::size_t copied_ = 0;
  std::string_view root_line_;
  std::string before_key_;
  std::string before_value_;
  Position last_key_ = 0;
  XmlLayout layout_;
};

}  // namespace

std::string splice_xml(const XmlContents& contents, ChangeSet changes) {
  std::string text = XmlSplicer(contents, changes).run();
  if (contents.encoding() == XmlEncoding::Utf8) return text;
  std::string bytes;
  bytes.reserve(text.size() * 2);
  append_utf16(bytes, text,
               contents.encoding() == XmlEncoding::Utf16Big ? ByteOrder::Big : ByteOrder::Little);
  return bytes;
}

}  // namespace wispen::plist
