#include "host/record.h"

#include <algorithm>
#include <span>
#include <string>
#include <type_traits>
#include <utility>

#include "host/text.h"

namespace quantiverse::host {
namespace {

// Whether `number` survives as a `To`.
template <class To>
bool fits(int number) {
  return std::in_range<To>(number);
}

template <class Form>
bool write_text(const std::string& text, Record<Form>& record, Memory& memory) {
  using Char = typename Form::Char;
  std::size_t size = encoded_size(text);
  if (std::is_same_v<Form, Form4>) size = std::min(size, Form::kLongestText);
  if (size > Form::kLongestText) return false;
  Char* const counted = memory.allocate<Char>(size + 1);
  counted[0] = static_cast<Char>(size);
  encode(text, std::span(counted + 1, size));
  record.value.text = counted;
  record.type = kTypeText;
  return true;
}

template <class Form>
bool write_reference(const Reference& reference, Record<Form>& record, Memory& memory) {
  using Row = typename Form::Row;
  using Column = typename Form::Column;
  const Area& area = reference.area;
  if (!fits<Row>(area.last_row) || !fits<Column>(area.last_column)) return false;
  const AreaRecord<Form> written = {
      static_cast<Row>(area.first_row), static_cast<Row>(area.last_row),
      static_cast<Column>(area.first_column), static_cast<Column>(area.last_column)};
  if (reference.is_single) {
    record.value.single = {1, written};
    record.type = kTypeSingle;
  } else {
    auto* const table = memory.allocate<AreaTable<Form>>(1);
    table->count = 1;
    table->areas[0] = written;
    record.value.reference = {table, 1};
    record.type = kTypeReference;
  }
  return true;
}

template <class Form>
bool write_array(const Array& array, Record<Form>& record, Memory& memory) {
  if (array.rows > Form::kMostRows || array.columns > Form::kMostColumns) return false;
  auto* const elements = memory.allocate<Record<Form>>(array.elements.size());
  for (std::size_t i = 0; i < array.elements.size(); ++i) {
    if (!write_record(array.elements[i], elements[i], memory)) return false;
  }
  using Extent = typename Form::Extent;
  record.value.array = {elements, static_cast<Extent>(array.rows),
                        static_cast<Extent>(array.columns)};
  record.type = kTypeArray;
  return true;
}

template <class Form>
struct Writer {
  Record<Form>& record;
  Memory& memory;

  bool operator()(Nil) { return set(kTypeNil); }
  bool operator()(Missing) { return set(kTypeMissing); }
  bool operator()(Number number) {
    record.value.number = number.value;
    return set(kTypeNumber);
  }
  bool operator()(Integer integer) {
    if (!fits<typename Form::Integer>(integer.value)) return false;
    record.value.integer = static_cast<typename Form::Integer>(integer.value);
    return set(kTypeInteger);
  }
  bool operator()(bool flag) {
    record.value.boolean = flag ? 1 : 0;
    return set(kTypeBool);
  }
  bool operator()(Error error) {
    record.value.error = static_cast<typename Form::Code>(error.code);
    return set(kTypeError);
  }
  bool operator()(const std::string& text) { return write_text(text, record, memory); }
  bool operator()(const Reference& reference) { return write_reference(reference, record, memory); }
  bool operator()(const Array& array) { return write_array(array, record, memory); }

 private:
  bool set(unsigned type) {
    record.type = static_cast<typename Form::Type>(type);
    return true;
  }
};

// The value as one of this kind, with what it has in storage if it was one already.
template <class Kind>
Kind& reused(Value& value) {
  auto* const held = std::get_if<Kind>(&value.held);
  return held != nullptr ? *held : value.held.template emplace<Kind>();
}

template <class Form>
bool read_text(const typename Form::Char* counted, Value& value) {
  if (counted == nullptr) return false;
  if constexpr (std::is_same_v<Form, Form4>) {
    reused<std::string>(value) =
        from_windows_1252({counted + 1, static_cast<unsigned char>(counted[0])});
  } else {
    from_utf16({counted + 1, counted[0]}, reused<std::string>(value));
  }
  return true;
}

template <class Form>
bool read_area(const AreaRecord<Form>& area, bool is_single, Value& value) {
  const Area read = {area.first_row, area.first_column, area.last_row, area.last_column};
  const Area sheet = {0, 0, Form12::kMostRows - 1, Form12::kMostColumns - 1};
  if (read.rows() < 1 || read.columns() < 1 || !sheet.holds(read)) return false;
  value.held = Reference{read, is_single};
  return true;
}

template <class Form>
bool read_array(const Record<Form>& record, Value& value) {
  const auto& array = record.value.array;
  const bool has_size = array.rows >= 1 && array.columns >= 1;
  if (array.elements == nullptr || !has_size) return false;
  if (std::int64_t{array.rows} * array.columns > kMostElements) return false;
  const auto size = static_cast<std::size_t>(std::int64_t{array.rows} * array.columns);
  auto& read = reused<Array>(value);
  read.rows = array.rows;
  read.columns = array.columns;
  read.elements.resize(size);
  const Record<Form>* element = array.elements;
  for (Value& place : read.elements) {
    const unsigned type = element->type & kTypeMask;
    if ((type & (kTypeArray | kTypeReference | kTypeSingle)) != 0) return false;
    if (!read_record(*element++, place)) return false;
  }
  return true;
}

}  // namespace

template <class Form>
bool write_record(const Value& value, Record<Form>& record, Memory& memory) {
  return std::visit(Writer<Form>{record, memory}, value.held);
}

template <class Form>
bool read_record(const Record<Form>& record, Value& value) {
  switch (record.type & kTypeMask) {
    case kTypeNumber:
      value.held = Number{record.value.number};
      return true;
    case kTypeText:
      return read_text<Form>(record.value.text, value);
    case kTypeBool:
      value.held = record.value.boolean != 0;
      return true;
    case kTypeReference: {
      const auto* const table = record.value.reference.areas;
      return table != nullptr && table->count > 0 && read_area<Form>(table->areas[0], false, value);
    }
    case kTypeError:
      value.held = Error{record.value.error};
      return true;
    case kTypeArray:
      return read_array(record, value);
    case kTypeMissing:
      value.held = Missing{};
      return true;
    case kTypeNil:
      value.held = Nil{};
      return true;
    case kTypeSingle:
      return read_area<Form>(record.value.single.area, true, value);
    case kTypeInteger:
      value.held = Integer{record.value.integer};
      return true;
    default:
      return false;
  }
}

template <class Form>
const void* memory_of(const Record<Form>& record) {
  switch (record.type & kTypeMask) {
    case kTypeText:
      return record.value.text;
    case kTypeReference:
      return record.value.reference.areas;
    case kTypeArray:
      return record.value.array.elements;
    default:
      return nullptr;
  }
}

template bool write_record(const Value&, Record<Form4>&, Memory&);
template bool write_record(const Value&, Record<Form12>&, Memory&);
template bool read_record(const Record<Form4>&, Value&);
template bool read_record(const Record<Form12>&, Value&);
template const void* memory_of(const Record<Form4>&);
template const void* memory_of(const Record<Form12>&);

}  // namespace quantiverse::host
