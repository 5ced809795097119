#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "addin/excel_call.h"

// How Excel gets to know the functions of the add-in. A static record declares a function, the
// application makes a registration of each, and the registrations go to Excel and back.
namespace quantiverse {

// A function as its source declares it; null and empty texts are absent. Of a text in two widths
// the wide one alone will do; the narrow one alone serves the older generation.
struct XlFunctionRecord {
  const char* export4 = nullptr;  // the entry point for values as XLOPER
  const char* export12 = nullptr;
  const char* types4 = nullptr;  // Excel's type text: the result's letter, then the arguments'
  const char* types12 = nullptr;
  const char16_t* name = nullptr;   // as formulas have it
  const char* arguments = nullptr;  // their names, separated by commas
  const char16_t* wide_arguments = nullptr;
  int macro_type = 1;              // 1 function, 2 command; 3 and above count as 1
  const char* category = nullptr;  // a name, or the number of one of Excel's own
  const char16_t* wide_category = nullptr;
  std::uint16_t help_id = 0;             // 0 for one to be assigned
  const char16_t* help_topic = nullptr;  // comes before the id
  const char* help = nullptr;
  const char16_t* wide_help = nullptr;
  // One text for each argument, each with its NUL, and an empty text behind the last.
  const char* argument_help = nullptr;
  const char16_t* wide_argument_help = nullptr;
  const char16_t* descriptor = nullptr;  // the function again, for tools; nothing here reads it
  std::uint16_t minimum_version = 0;     // of Excel; 0 for no limit
  std::uint16_t maximum_version = 0;

  mutable const XlFunctionRecord* next = nullptr;  // in the list of AddRecord
};

// Puts a record in front of the list that BuildRegistrations reads. The record has to stay where it
// is as long as the library is loaded. Runs while static objects are constructed.
void AddRecord(const XlFunctionRecord& record);

// A record that does so by itself.
struct XlStaticFunctionRecord : XlFunctionRecord {
  explicit XlStaticFunctionRecord(const XlFunctionRecord& record) : XlFunctionRecord(record) {
    AddRecord(*this);
  }
  XlStaticFunctionRecord(const XlStaticFunctionRecord&) = delete;
  XlStaticFunctionRecord& operator=(const XlStaticFunctionRecord&) = delete;
};

// A function as Excel is told of it.
struct CXlFunctionRegistration {
  CXlFunctionRegistration() = default;
  // Copies all texts. A narrow text that is missing is made from its wide twin.
  explicit CXlFunctionRegistration(const XlFunctionRecord& record);

  std::string export4;
  std::string export12;
  std::string types4;
  std::string types12;
  std::u16string name;
  std::string arguments;
  std::u16string wide_arguments;
  int macro_type = 1;
  std::string category;
  std::u16string wide_category;
  std::uint16_t help_id = 0;
  std::u16string help_topic;
  std::string help;
  std::u16string wide_help;
  std::vector<std::string> argument_help;
  std::vector<std::u16string> wide_argument_help;
  std::u16string descriptor;
  std::uint16_t minimum_version = 0;
  std::uint16_t maximum_version = 0;
  double register_id = 0.0;  // Excel's; 0.0 when not registered
  bool registered = false;
};

// What registering asks of the application.
class IXlRegistrationSite {
 public:
  IXlRegistrationSite() = default;
  IXlRegistrationSite(const IXlRegistrationSite&) = delete;
  IXlRegistrationSite& operator=(const IXlRegistrationSite&) = delete;
  virtual ~IXlRegistrationSite() = default;

  // Tells the observers of CXlRegisterFunctionsEvent. They may change the registrations.
  virtual void NotifyRegisterFunctions() = 0;
  // The add-in's file as Excel names it; empty if it doesn't.
  virtual std::string FileName() = 0;
  virtual std::string HelpFile() = 0;
};

// The registrations of the application, in the order in which they go to Excel. Main thread only.
class CXlFunctions {
 public:
  explicit CXlFunctions(IXlRegistrationSite& site) : site_(site) {}

  // One registration for each static record. Gives their number.
  int BuildRegistrations();
  void Add(CXlFunctionRegistration registration) { all_.push_back(std::move(registration)); }
  void Clear() { all_.clear(); }
  // References to them stay valid while others are added.
  std::deque<CXlFunctionRegistration>& All() { return all_; }

  // Sends them to Excel. One that isn't meant for this Excel counts as done.
  // false: Excel has refused some; they aren't marked registered.
  bool RegisterFunctions();
  // Takes them back. What remains in Excel is a hidden name that does no harm.
  void UnregisterFunctions();

  // One more after all others have gone to Excel: goes there at once. Where there is one of its
  // name, that serves instead.
  // false: Excel has refused it; it stays, not marked registered.
  bool AddAndRegister(CXlFunctionRegistration registration);
  // Takes the one of that name back, and forgets it. References to others are no longer valid.
  void Remove(std::u16string_view name);

  // Where Excel finds the help for a function: "file!topic", empty if nowhere.
  [[nodiscard]] std::u16string HelpTopicOf(const CXlFunctionRegistration& registration) const;

 private:
  void AssignHelpIds();
  bool RegisterOne(CXlFunctionRegistration& registration, const CXlOper& file_name) const;
  static void UnregisterOne(CXlFunctionRegistration& registration, const CXlOper& file_name);
  std::deque<CXlFunctionRegistration>::iterator Find(std::u16string_view name);

  IXlRegistrationSite& site_;
  std::deque<CXlFunctionRegistration> all_;
  std::map<std::u16string, int> help_ids_;  // by name, those of the registrations included
};

}  // namespace quantiverse
