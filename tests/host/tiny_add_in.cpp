// An add-in for the tests of the host. Through `Ask` a script makes any call of Excel and sees what
// comes of it; `Misuse` does what a faulty add-in would do.

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "host/xlcall.h"
#include "tests/host/tiny_system.h"

namespace {

using namespace quantiverse::host;

constexpr int kFree = 16384;
constexpr int kCoerce = 16386;
constexpr int kGetName = 16393;
constexpr int kRegister = 149;
constexpr int kGetWorkspace = 186;
constexpr int kUnregister = 201;
constexpr int kInfo = 244;
constexpr int kFirstOfForm12 = 12;

// Set by SetExcel12EntryPt, which Excel calls before it opens the add-in.
Callback12* passed_callback = nullptr;
bool runs_form12 = false;
std::vector<double> registered_ids;

int call_excel(int function, Record4* result, std::vector<Record4*> arguments) {
  return find_excel4v()(function, result, static_cast<int>(arguments.size()), arguments.data());
}

int call_excel(int function, Record12* result, std::vector<Record12*> arguments) {
  auto* const exported = find_callback12();
  auto* const callback = exported != nullptr ? exported : passed_callback;
  if (callback == nullptr) return kFailed;
  return callback(function, static_cast<int>(arguments.size()), arguments.data(), result);
}

template <class Form>
void give_back(Record<Form>& record) {
  call_excel(kFree, static_cast<Record<Form>*>(nullptr), {&record});
}

template <class Form>
Record<Form> number_record(double number) {
  Record<Form> record{};
  record.value.number = number;
  record.type = kTypeNumber;
  return record;
}

// Allocated, for the caller to free.
template <class Form>
Record<Form> text_record(std::string_view text) {
  using Char = typename Form::Char;
  Record<Form> record{};
  record.value.text = new Char[text.size() + 1];
  record.value.text[0] = static_cast<Char>(text.size());
  std::copy(text.begin(), text.end(), record.value.text + 1);
  record.type = kTypeText;
  return record;
}

template <class Form>
void free_contents(Record<Form>& record) {
  const unsigned type = record.type & kTypeMask;
  if (type == kTypeText) delete[] record.value.text;
  if (type == kTypeReference) delete record.value.reference.areas;
  if (type == kTypeArray) {
    auto& array = record.value.array;
    for (int i = 0; i < array.rows * array.columns; ++i) free_contents(array.elements[i]);
    delete[] array.elements;
  }
  record = {};
}

template <class Form>
Record<Form> deep_copy(const Record<Form>& from) {
  Record<Form> copy = from;
  copy.type = static_cast<typename Form::Type>(from.type & kTypeMask);
  if (copy.type == kTypeText) {
    using Char = typename Form::Char;
    const auto size = static_cast<std::make_unsigned_t<Char>>(from.value.text[0]) + std::size_t{1};
    copy.value.text = new Char[size];
    std::copy_n(from.value.text, size, copy.value.text);
  } else if (copy.type == kTypeReference) {
    copy.value.reference.areas = new AreaTable<Form>(*from.value.reference.areas);
  } else if (copy.type == kTypeArray) {
    auto& array = copy.value.array;
    const auto count =
        static_cast<std::size_t>(array.rows) * static_cast<std::size_t>(array.columns);
    array.elements = new Record<Form>[count];
    for (std::size_t i = 0; i < count; ++i) {
      array.elements[i] = deep_copy(from.value.array.elements[i]);
    }
  }
  return copy;
}

// What is handed back stays until the thread hands back the next.
template <class Form>
void* hand_back(Record<Form> record) {
  thread_local Record<Form> returned;
  returned = record;
  const unsigned type = record.type & kTypeMask;
  if (type == kTypeText || type == kTypeReference || type == kTypeArray) {
    returned.type = static_cast<typename Form::Type>(type | kAddInFrees);
  }
  return &returned;
}

// The text of a record that holds one, else nothing. Of ASCII only.
template <class Form>
std::string text_of(const Record<Form>& record) {
  if (record.type != kTypeText) return {};
  const auto size = static_cast<std::make_unsigned_t<typename Form::Char>>(record.value.text[0]);
  std::string text;
  for (std::size_t i = 1; i <= size; ++i) text += static_cast<char>(record.value.text[i]);
  return text;
}

// A reference from "R1C1:R2C2", counted from 1: Excel replaces those that a script passes.
template <class Form>
Record<Form> reference_record(const std::string& text, bool is_single) {
  int first_row = 0;
  int first_column = 0;
  int last_row = 0;
  int last_column = 0;
  std::sscanf(text.c_str(), "R%dC%d:R%dC%d", &first_row, &first_column, &last_row, &last_column);
  const AreaRecord<Form> area = {static_cast<typename Form::Row>(first_row - 1),
                                 static_cast<typename Form::Row>(last_row - 1),
                                 static_cast<typename Form::Column>(first_column - 1),
                                 static_cast<typename Form::Column>(last_column - 1)};
  Record<Form> record{};
  if (is_single) {
    record.value.single = {1, area};
    record.type = kTypeSingle;
  } else {
    record.value.reference = {new AreaTable<Form>{1, {area}}, 0};
    record.type = kTypeReference;
  }
  return record;
}

// Makes a call of Excel. Gives its result, or the text "code N". A text "@R1C1:R2C2" is passed as a
// single reference, "@@R1C1:R2C2" as one of any sheet, and "@" as a text without a pointer.
template <class Form>
void* ask(int function, std::vector<Record<Form>*> arguments) {
  while (!arguments.empty() && arguments.back()->type == kTypeNil) arguments.pop_back();
  std::vector<Record<Form>> references(arguments.size());
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string text = text_of(*arguments[i]);
    if (!text.starts_with('@')) continue;
    const bool is_single = !text.starts_with("@@");
    references[i] = reference_record<Form>(text.substr(is_single ? 1 : 2), is_single);
    if (text == "@") references[i].value.text = nullptr;
    if (text == "@") references[i].type = kTypeText;
    arguments[i] = &references[i];
  }
  Record<Form> result{};
  const int code = call_excel(function, &result, arguments);
  for (auto& reference : references) free_contents(reference);
  if (code != 0) return hand_back(text_record<Form>("code " + std::to_string(code)));
  Record<Form> copy = deep_copy(result);
  give_back(result);
  return hand_back(copy);
}

template <class Form>
void* misuse(const std::string& how) {
  Record<Form> release = text_record<Form>("Release");
  // Not allocated: the host may have had and freed the same place.
  static typename Form::Char mine[] = {4, 'm', 'i', 'n', 'e'};
  Record<Form> own{};
  own.value.text = mine;
  own.type = kTypeText;
  Record<Form> lent{};
  const int code = call_excel(kInfo, &lent, {&release});
  free_contents(release);
  if (how == "foreign free") give_back(own);
  if (how == "lend back") {
    lent.type = static_cast<typename Form::Type>(lent.type | kExcelFrees);
    thread_local Record<Form> returned;
    return &(returned = lent);
  }
  if (how == "wrong form") {
    Record4 other{};
    std::memcpy(&other.value, &lent.value, sizeof(void*));
    other.type = kTypeText;
    give_back(other);
  }
  if (how != "leak") give_back(lent);
  if (how == "double free") give_back(lent);
  if (how == "null result") return nullptr;
  return hand_back(number_record<Form>(code));
}

// The version that Excel says it is.
int find_version() {
  Record4 text{};
  Record4 number{};
  Record4 two = number_record<Form4>(2);
  Record4 integer = number_record<Form4>(kTypeInteger);
  call_excel(kGetWorkspace | kIntl, &text, {&two});
  call_excel(kCoerce | kIntl, &number, {&text, &integer});
  give_back(text);
  return number.value.integer;
}

template <class Form>
bool register_one(const char* export_name, const char* types, const char* name, int macro_type) {
  Record<Form> file{};
  if (call_excel(kGetName, &file, {}) != 0) return false;
  Record<Form> texts[] = {text_record<Form>(export_name), text_record<Form>(types),
                          text_record<Form>(name), text_record<Form>("")};
  Record<Form> type = number_record<Form>(macro_type);
  Record<Form> id{};
  const int code =
      call_excel(kRegister, &id, {&file, &texts[0], &texts[1], &texts[2], &texts[3], &type});
  give_back(file);
  for (auto& text : texts) free_contents(text);
  if (code == 0 && id.type == kTypeNumber) registered_ids.push_back(id.value.number);
  return code == 0 && id.type == kTypeNumber;
}

template <class Form>
void unregister_all() {
  for (const double id : registered_ids) {
    Record<Form> number = number_record<Form>(id);
    Record<Form> result{};
    call_excel(kUnregister, &result, {&number});
  }
  registered_ids.clear();
}

template <class Form>
void* row_of(std::int32_t number, short flag) {
  Record<Form> row{};
  row.value.array = {new Record<Form>[2](), 1, 2};
  row.value.array.elements[0] = number_record<Form>(number);
  row.value.array.elements[1].value.boolean = flag != 0 ? 1 : 0;
  row.value.array.elements[1].type = kTypeBool;
  row.type = kTypeArray;
  return hand_back(row);
}

// A text as numbers of its characters shows every one of them.
template <class Form>
void* codes_of(const typename Form::Char* text) {
  if (text == nullptr) return hand_back(text_record<Form>("null"));
  std::string codes;
  for (; *text != 0; ++text) {
    const auto code = static_cast<std::make_unsigned_t<typename Form::Char>>(*text);
    codes += (codes.empty() ? "" : " ") + std::to_string(static_cast<unsigned>(code));
  }
  return hand_back(text_record<Form>(codes));
}

template <class Form>
void* type_of(const Record<Form>* record) {
  return hand_back(
      number_record<Form>(record != nullptr ? static_cast<double>(record->type) : -1.0));
}

// The last argument's type, a hundred times the event's number on top.
template <class Form>
void* handle_event(std::int32_t number, const Record<Form>* last) {
  return hand_back(number_record<Form>(number * 10000.0 + last->type));
}

template <class Form>
void* manager_info(const Record<Form>* action) {
  const bool is_one = action->type == kTypeNumber && action->value.number == 1.0;
  return hand_back(is_one ? text_record<Form>("Tiny") : number_record<Form>(0));
}

// The button that the user pressed.
template <class Form>
void* show_box(const typename Form::Char* text) {
  std::u16string wide;
  for (; *text != 0; ++text) wide += static_cast<char16_t>(*text);
  return hand_back(number_record<Form>(show_message_box(wide.c_str(), u"Tiny", 52)));
}

struct FunctionRow {
  const char* export_name;  // without the generation
  const char* types4;
  const char* types12;
  const char* name;
  int macro_type;
};

constexpr FunctionRow kFunctions[] = {
    {"Twice", "PB", "QB$", "Twice", 1},
    {"Codes", "PC", "QC%$", "Codes", 1},
    {"Row", "PJA", "QJA", "Row", 1},
    {"TypeOf", "PP", "QQ", "TypeOf", 1},
    {"Ask", "PJPPPPPPP", "QJQQQQQQQ", "Ask", 2},
    {"Misuse", "PC", "QC%", "Misuse", 2},
    {"Box", "PC", "QC%", "Box", 2},
};

template <class Form>
bool open_all() {
  registered_ids.clear();
  constexpr bool is_form12 = Form::kNumber == kFirstOfForm12;
  for (const auto& row : kFunctions) {
    const std::string export_name = row.export_name + std::to_string(Form::kNumber);
    const char* const types = is_form12 ? row.types12 : row.types4;
    if (!register_one<Form>(export_name.c_str(), types, row.name, row.macro_type)) return false;
  }
  return true;
}

}  // namespace

extern "C" {

#define EXPORT(type) XLHOST_EXPORT type XLHOST_PASCAL

EXPORT(int) xlAutoOpen() {
  runs_form12 = find_version() >= kFirstOfForm12;
  return (runs_form12 ? open_all<Form12>() : open_all<Form4>()) ? 1 : 0;
}
EXPORT(int) xlAutoClose() {
  runs_form12 ? unregister_all<Form12>() : unregister_all<Form4>();
  return 1;
}
EXPORT(int) xlAutoAdd() { return 2; }
EXPORT(int) xlAutoRemove() { return 3; }
EXPORT(void) SetExcel12EntryPt(Callback12* callback) { passed_callback = callback; }
EXPORT(void) xlAutoFree(Record4* record) { free_contents(*record); }
EXPORT(void) xlAutoFree12(Record12* record) { free_contents(*record); }

#define EXPORT_BOTH(name, body, parameters4, parameters12, arguments) \
  EXPORT(void*) name##4 parameters4 { return body<Form4> arguments; } \
  EXPORT(void*) name##12 parameters12 { return body<Form12> arguments; }

EXPORT_BOTH(Codes, codes_of, (const char* text), (const char16_t* text), (text))
EXPORT_BOTH(Box, show_box, (const char* text), (const char16_t* text), (text))
EXPORT_BOTH(Row, row_of, (std::int32_t number, short flag), (std::int32_t number, short flag),
            (number, flag))
EXPORT_BOTH(TypeOf, type_of, (const Record4* record), (const Record12* record), (record))
EXPORT_BOTH(CXlApp_ObserverEventHandler, handle_event,
            (std::int32_t number, Record4*, Record4*, Record4* last),
            (std::int32_t number, Record12*, Record12*, Record12* last), (number, last))
EXPORT_BOTH(Ask, ask,
            (std::int32_t code, Record4* a, Record4* b, Record4* c, Record4* d, Record4* e,
             Record4* f, Record4* g),
            (std::int32_t code, Record12* a, Record12* b, Record12* c, Record12* d, Record12* e,
             Record12* f, Record12* g),
            (code, {a, b, c, d, e, f, g}))

EXPORT(void*) Twice4(double number) { return hand_back(number_record<Form4>(2 * number)); }
EXPORT(void*) Twice12(double number) { return hand_back(number_record<Form12>(2 * number)); }
EXPORT(void*) Misuse4(const char* how) { return misuse<Form4>(how); }
EXPORT(void*) Misuse12(const char16_t* how) {
  std::string narrow;
  for (; *how != 0; ++how) narrow += static_cast<char>(*how);
  return misuse<Form12>(narrow);
}
EXPORT(void*) xlAddInManagerInfo(Record4* action) { return manager_info(action); }
EXPORT(void*) xlAddInManagerInfo12(Record12* action) { return manager_info(action); }
}
