#pragma once

#include <string>
#include <vector>

namespace quantiverse {

// A menu of the add-in's own on Excel's menu bar for worksheets. Newer Excels show it among the
// add-ins' tabs. All texts may refer to string resources (resource_text.h). Main thread only.
class CXlMenu {
 public:
  // Starts a menu without items. An "&" in the name marks the key that opens it.
  void Init(std::string name, std::string status_text);

  // Adds an item at the end. Before Create it waits for that; afterwards it is sent to Excel at
  // once.
  // macro: what Excel runs; status_text: shown while the item is chosen.
  // false: Excel has refused it.
  bool AddItem(std::string caption, std::string macro, std::string status_text);

  // Sends the menu to Excel.
  // parent:    the menu in which this is to be one; has to stay. Null for none.
  // position:  the menu, or the item of the parent, in front of which this is to stand; empty for
  //            the one that position_number counts, and with a 0 there too for Excel's own choice.
  //            Where Excel knows no such place on the menu bar, the choice is Excel's too.
  // false: Excel has refused it, or the parent is within a menu itself.
  bool Create(const CXlMenu* parent, const std::string& position, int position_number);

  // Takes the menu out of Excel. false: Excel has refused.
  [[nodiscard]] bool Delete() const;

 private:
  struct Item {
    std::string caption;
    std::string macro;
    std::string status_text;
  };

  [[nodiscard]] std::string ExcelsName() const;

  std::string name_;
  std::string expanded_name_;  // with the resources in place
  std::string status_text_;
  std::vector<Item> items_;
  bool is_created_ = false;
  const CXlMenu* parent_ = nullptr;
};

}  // namespace quantiverse
