#include "cli/commandrow.h"

namespace veldra {

namespace {

constexpr const char* kPathForm = "PATH";

TakeValue Stored(std::string& target) {
  return [&target](const std::string& text) {
    target = text;
    return std::string();
  };
}

}  // namespace

SOptionRow Argument(std::string name, std::string help, std::string& target) {
  return Required(Option(std::move(name), kPathForm, std::move(help), target));
}

SOptionRow Arguments(std::string name, std::string help, std::vector<std::string>& target) {
  const auto add = [&target](const std::string& text) {
    target.push_back(text);
    return std::string();
  };
  SOptionRow row = Option(std::move(name), kPathForm, std::move(help), add);
  row.repeated = true;
  return row;
}

SOptionRow Output(std::string name, std::string help, std::string& target) {
  SOptionRow row = Argument(std::move(name), std::move(help), target);
  row.is_output = true;
  return row;
}

SOptionRow TextOutput(std::string name, std::string help, std::string& target) {
  SOptionRow row = Output(std::move(name), std::move(help), target);
  row.is_text = true;
  return row;
}

SOptionRow Flag(std::string name, std::string help, bool& target) {
  const auto set = [&target](const std::string&) {
    target = true;
    return std::string();
  };
  return Option(std::move(name), "", std::move(help), set);
}

SOptionRow Option(std::string name, std::string form, std::string help, TakeValue take) {
  return {.name = std::move(name), .form = std::move(form), .help = std::move(help), .take = std::move(take)};
}

SOptionRow Option(std::string name, std::string form, std::string help, std::string& target) {
  return Option(std::move(name), std::move(form), std::move(help), Stored(target));
}

SOptionRow Required(SOptionRow row, bool required) {
  row.required = required;
  return row;
}

SOptionRow InGroup(std::string group, SOptionRow row) {
  row.group = std::move(group);
  return row;
}

}  // namespace veldra
