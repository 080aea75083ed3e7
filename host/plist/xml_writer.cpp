#include "host/plist/xml_writer.hpp"

#include "host/plist/scalars.hpp"
#include "host/plist/xml_text.hpp"

namespace wispen::plist {

namespace {

constexpr std::string_view kHeader =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
    "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
    "<plist version=\"1.0\">\n";
constexpr std::string_view kFooter = "\n</plist>\n";

class XmlWriter {
 public:
  XmlWriter(std::string& xml, const XmlLayout& layout) : xml_(xml), line_(layout.line), step_(layout.step) {}

  void write(const Tree& tree) {
    std::visit([this](const auto& value) { write(value); }, tree.variant());
  }

 private:
  void write(bool value) { xml_ += value ? "<true/>" : "<false/>"; }
  void write(Integer value) {
    element("integer", value.unsigned64 ? std::to_string(value.bits) : std::to_string(value.signed_value()));
  }
  void write(double value) { element("real", format_real(value)); }
  void write(const std::string& value) {
    xml_ += "<string>";
    append_escaped(xml_, value);
    xml_ += "</string>";
  }
  void write(Date value) { element("date", format_date(value.seconds).value_or("")); }
  void write(Uid value) { write(Dictionary{{"CF$UID", Integer::of_unsigned(value.number)}}); }

  void write(const Data& value) {
    constexpr std::size_t kColumns = 68;
    const std::string digits = format_base64(value);
    xml_ += "<data>";
    for (std::size_t i = 0; i < digits.size(); i += kColumns) {
      xml_ += line_;
      xml_.append(digits, i, kColumns);
    }
    xml_ += line_;
    xml_ += "</data>";
  }

  void write(const Array& value) {
    if (value.empty()) {
      xml_ += "<array/>";
      return;
    }
    xml_ += "<array>";
    line_ += step_;
    for (const Tree& child : value) {
      xml_ += line_;
      write(child);
    }
    close_container("</array>");
  }

  void write(const Dictionary& value) {
    if (value.empty()) {
      xml_ += "<dict/>";
      return;
    }
    xml_ += "<dict>";
    line_ += step_;
    for (const Member& member : value) {
      xml_ += line_;
      append_xml_key(xml_, member.key);
      xml_ += line_;
      write(member.value);
    }
    close_container("</dict>");
  }

  void close_container(std::string_view tag) {
    line_.resize(line_.size() - step_.size());
    xml_ += line_;
    xml_ += tag;
  }

  void element(std::string_view name, std::string_view content) {
    xml_.append("<").append(name).append(">").append(content).append("</").append(name).append(">");
  }

  std::string& xml_;
  std::string line_;
  std::string_view step_;
};

}  // namespace

void append_xml(std::string& xml, const Tree& tree, const XmlLayout& layout) {
  XmlWriter(xml, layout).write(tree);
}

void append_xml_key(std::string& xml, std::string_view key) {
  xml += "<key>";
  append_escaped(xml, key);
  xml += "</key>";
}

std::string encode_xml(const Tree& tree) {
  std::string xml(kHeader);
  append_xml(xml, tree, {"\n", "\t"});
  xml += kFooter;
  return xml;
}

}  // namespace wispen::plist
