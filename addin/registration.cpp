#include "addin/registration.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <tuple>

#include "addin/addin_state.h"
#include "addin/resource_text.h"
#include "text/scanner.h"

namespace quantiverse {
namespace {

constexpr int kFirstAssignedHelpId = 1001;
constexpr std::size_t kMaxHelpText = 255;

template <typename Char>
std::basic_string<Char> TextOrEmpty(const Char* text) {
  return text != nullptr ? text : std::basic_string<Char>();
}

template <typename Char>
std::vector<std::basic_string<Char>> TextsOfList(const Char* list) {
  std::vector<std::basic_string<Char>> texts;
  while (list != nullptr && *list != 0) {
    texts.emplace_back(list);
    list += texts.back().size() + 1;
  }
  return texts;
}

void CompleteNarrow(const std::u16string& wide, std::string& narrow) {
  if (narrow.empty()) narrow = NarrowText(wide);
}

// The texts of one form.
template <typename Char>
struct Texts {
  using Text = std::basic_string<Char>;
  const std::string& export_name;
  const std::string& types;
  const Text& arguments;
  const Text& category;
  const Text& help;
  const std::vector<Text>& argument_help;
};

Texts<char16_t> TextsOf12(const CXlFunctionRegistration& from) {
  return {from.export12,      from.types12,   from.wide_arguments,
          from.wide_category, from.wide_help, from.wide_argument_help};
}

Texts<char> TextsOf4(const CXlFunctionRegistration& from) {
  return {from.export4, from.types4, from.arguments, from.category, from.help, from.argument_help};
}

// The form in which a function is registered with the running Excel; none if it lacks the texts.
std::optional<XlMode> FormOf(const CXlFunctionRegistration& from) {
  const bool can_be_4 = !from.export4.empty() && !from.types4.empty();
  const bool can_be_12 = !from.export12.empty() && !from.types12.empty();
  // Names of arguments in the narrow width alone go before the newer form.
  const bool only_narrow =
      from.wide_arguments.empty() && !from.types4.empty() && !from.arguments.empty();
  if (IsExcel12() && can_be_12 && !only_narrow) return XlMode::k12;
  if (can_be_4 &&
      (!from.arguments.empty() || from.types12.empty() || from.wide_arguments.empty())) {
    return XlMode::k4;
  }
  return std::nullopt;
}

bool IsForRunningVersion(const CXlFunctionRegistration& registration) {
  const int version = State().excel.version;
  const bool too_old = registration.minimum_version != 0 && registration.minimum_version > version;
  const bool too_new = registration.maximum_version != 0 && registration.maximum_version < version;
  return !too_old && !too_new;
}

bool HasArguments(std::string_view types) {
  return types.size() > 1 && std::any_of(types.begin() + 1, types.end(), is_name_start);
}

template <typename Char>
std::basic_string<Char> Expanded(std::basic_string<Char> text) {
  ExpandResourceText(text, text);
  return text;
}

// Excel drops characters at the end of the last text that it is given: let them be dots.
template <typename Char>
std::basic_string<Char> HelpText(const std::basic_string<Char>& source, bool is_last) {
  std::basic_string<Char> text = Expanded(source);
  const std::basic_string<Char> dots(2, '.');
  if (is_last && !text.ends_with(dots)) text += text.ends_with(Char{'.'}) ? dots.substr(1) : dots;
  if (text.size() > kMaxHelpText) text.resize(kMaxHelpText);
  return text;
}

template <typename Char>
CXlOper CategoryValue(const std::basic_string<Char>& source) {
  const std::basic_string<Char> text = Expanded(source);
  const CXlOper value = text;
  const bool is_number = !text.empty() && std::all_of(text.begin(), text.end(),
                                                      [](Char c) { return c >= '0' && c <= '9'; });
  return is_number ? CXlOper(value.ToDouble()) : value;
}

// The arguments of xlfRegister, in its order.
template <typename Char>
std::vector<CXlOper> RegisterArguments(const CXlFunctionRegistration& registration,
                                       const Texts<Char>& texts, const CXlOper& file_name,
                                       const std::u16string& help_topic) {
  const bool has_arguments = HasArguments(texts.types);
  std::vector<CXlOper> values;
  values.reserve(10 + texts.argument_help.size());
  values.push_back(file_name);
  values.emplace_back(texts.export_name);
  values.emplace_back(texts.types);
  values.emplace_back(registration.name);
  values.emplace_back(Expanded(texts.arguments));
  values.emplace_back(std::to_string(registration.macro_type));
  values.push_back(CategoryValue(texts.category));
  values.emplace_back("");  // the shortcut
  values.emplace_back(help_topic);
  values.emplace_back(HelpText(texts.help, !has_arguments));
  for (const auto& text : texts.argument_help) {
    values.emplace_back(HelpText(text, has_arguments && &text == &texts.argument_help.back()));
  }
  return values;
}

std::u16string FoldCase(std::u16string text) {
  for (char16_t& c : text) {
    if (c < 0x80) c = static_cast<char16_t>(fold_case(static_cast<char>(c)));
  }
  return text;
}

// Those with a help id in its order, then the others; by name where that decides nothing.
bool ComesFirst(const CXlFunctionRegistration* a, const CXlFunctionRegistration* b) {
  constexpr int kBehindAll = 65536;
  const auto rank = [](const CXlFunctionRegistration& registration) {
    const int id = registration.help_id != 0 ? registration.help_id : kBehindAll;
    return std::tuple(id, FoldCase(registration.name));
  };
  return rank(*a) < rank(*b);
}

}  // namespace

void AddRecord(const XlFunctionRecord& record) {
  const XlFunctionRecord*& first = State().registration.first_record;
  record.next = first;
  first = &record;
}

CXlFunctionRegistration::CXlFunctionRegistration(const XlFunctionRecord& record)
    : export4(TextOrEmpty(record.export4)),
      export12(TextOrEmpty(record.export12)),
      types4(TextOrEmpty(record.types4)),
      types12(TextOrEmpty(record.types12)),
      name(TextOrEmpty(record.name)),
      arguments(TextOrEmpty(record.arguments)),
      wide_arguments(TextOrEmpty(record.wide_arguments)),
      macro_type(record.macro_type < 3 ? record.macro_type : 1),
      category(TextOrEmpty(record.category)),
      wide_category(TextOrEmpty(record.wide_category)),
      help_id(record.help_id),
      help_topic(TextOrEmpty(record.help_topic)),
      help(TextOrEmpty(record.help)),
      wide_help(TextOrEmpty(record.wide_help)),
      argument_help(TextsOfList(record.argument_help)),
      wide_argument_help(TextsOfList(record.wide_argument_help)),
      descriptor(TextOrEmpty(record.descriptor)),
      minimum_version(record.minimum_version),
      maximum_version(record.maximum_version) {
  CompleteNarrow(wide_arguments, arguments);
  CompleteNarrow(wide_category, category);
  CompleteNarrow(wide_help, help);
  if (argument_help.empty()) {
    for (const std::u16string& text : wide_argument_help) argument_help.push_back(NarrowText(text));
  }
}

int CXlFunctions::BuildRegistrations() {
  int count = 0;
  const XlFunctionRecord* record = State().registration.first_record;
  for (; record != nullptr; record = record->next, ++count) all_.emplace_back(*record);
  return count;
}

// A function "<name>Async" shares the help of "<name>".
void CXlFunctions::AssignHelpIds() {
  std::vector<const CXlFunctionRegistration*> sorted;
  for (const CXlFunctionRegistration& registration : all_) sorted.push_back(&registration);
  std::stable_sort(sorted.begin(), sorted.end(), ComesFirst);

  help_ids_.clear();
  int next = kFirstAssignedHelpId;
  constexpr std::u16string_view kAsync = u"Async";
  for (const CXlFunctionRegistration* const registration : sorted) {
    const std::u16string& name = registration->name;
    int id = registration->help_id;
    if (id == 0) {
      auto partner = help_ids_.end();
      if (name.size() > kAsync.size() && name.ends_with(kAsync)) {
        partner = help_ids_.find(name.substr(0, name.size() - kAsync.size()));
      }
      id = partner != help_ids_.end() ? partner->second : next++;
    } else if (id >= next) {
      next = id + 1;
    }
    help_ids_[name] = id;
  }
}

std::u16string CXlFunctions::HelpTopicOf(const CXlFunctionRegistration& registration) const {
  int id = registration.help_id;
  if (id == 0) {
    const auto found = help_ids_.find(registration.name);
    if (found != help_ids_.end()) id = found->second;
  }
  if (registration.help_topic.empty() && id == 0) return {};
  const std::u16string file = WideText(site_.HelpFile()) + u'!';
  return file +
         (registration.help_topic.empty() ? WideText(std::to_string(id)) : registration.help_topic);
}

bool CXlFunctions::RegisterFunctions() {
  site_.NotifyRegisterFunctions();
  AssignHelpIds();
  const CXlOper file_name = site_.FileName();
  bool all_done = true;
  for (CXlFunctionRegistration& registration : all_) {
    if (!RegisterOne(registration, file_name)) all_done = false;
  }
  return all_done;
}

bool CXlFunctions::RegisterOne(CXlFunctionRegistration& registration,
                               const CXlOper& file_name) const {
  const std::optional<XlMode> form = FormOf(registration);
  if (!form.has_value() || !IsForRunningVersion(registration)) return true;
  const std::u16string topic = HelpTopicOf(registration);
  const std::vector<CXlOper> arguments =
      form == XlMode::k12
          ? RegisterArguments(registration, TextsOf12(registration), file_name, topic)
          : RegisterArguments(registration, TextsOf4(registration), file_name, topic);
  CXlOper id;
  if (RegisterExcel(id, *form, xlfRegister, arguments) == xlretSuccess) {
    registration.register_id = id.ToDouble();
  }
  registration.registered = registration.register_id != 0.0;
  return registration.registered;
}

void CXlFunctions::UnregisterFunctions() {
  const CXlOper file_name = site_.FileName();
  for (CXlFunctionRegistration& registration : all_) UnregisterOne(registration, file_name);
}

void CXlFunctions::UnregisterOne(CXlFunctionRegistration& registration, const CXlOper& file_name) {
  CXlOper dropped;
  const XlMode form = FormOf(registration).value_or(XlMode::kRunning);
  const CXlOper name = registration.name;
  if (registration.register_id != 0.0) {
    const CXlOper id = registration.register_id;
    ExcelV(dropped, form, xlfUnregister, {&id});
    registration.register_id = 0.0;
  }
  ExcelV(dropped, form, xlfSetName, {&name});
  registration.registered = false;
  // The name would stay callable. Registered as a hidden one, it no longer leads anywhere.
  const CXlOper closing[] = {file_name, "xlAutoRemove", "J", name, XlMissing{}, 0.0};
  RegisterExcel(dropped, form, xlfRegister, closing);
}

bool CXlFunctions::AddAndRegister(CXlFunctionRegistration registration) {
  auto found = Find(registration.name);
  if (found == all_.end()) found = all_.insert(all_.end(), std::move(registration));
  return found->registered || RegisterOne(*found, site_.FileName());
}

void CXlFunctions::Remove(std::u16string_view name) {
  const auto found = Find(name);
  if (found == all_.end()) return;
  UnregisterOne(*found, site_.FileName());
  all_.erase(found);
}

std::deque<CXlFunctionRegistration>::iterator CXlFunctions::Find(std::u16string_view name) {
  return std::find_if(all_.begin(), all_.end(),
                      [name](const auto& registration) { return registration.name == name; });
}

}  // namespace quantiverse
