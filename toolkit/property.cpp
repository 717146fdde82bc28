#include "toolkit/property.h"

#include <utility>

CQORPProp::CQORPProp(std::wstring name) : Name(std::move(name)) {}
CQORPProp::CQORPProp(std::wstring name, std::int32_t value, int id)
    : CQORPProp(std::move(name), Value(value), id, {}) {}
CQORPProp::CQORPProp(std::wstring name, bool value, int id) : CQORPProp(std::move(name), Value(value), id, {}) {}
CQORPProp::CQORPProp(std::wstring name, Value value, int id, std::wstring description)
    : Name(std::move(name)), Description(std::move(description)), Id(id), Current(std::move(value)) {}
CQORPProp::~CQORPProp() = default;

CQORPProp& CQORPProp::AddSubItem(std::unique_ptr<CQORPProp> item) {
  return *SubItems.emplace_back(std::move(item));
}

CQORPColorProp::CQORPColorProp(std::wstring name, ColorRef value, Buttons buttons, int id, std::wstring description)
    : CQORPProp(std::move(name), Value(value), id, std::move(description)), Choices(std::move(buttons)) {}

CQORPFontProp::CQORPFontProp(std::wstring name, const wxFont& value, std::uint32_t dialogFlags, ColorRef dialogColor,
                             int id, std::wstring description)
    : CQORPProp(std::move(name), Value(value), id, std::move(description)),
      DialogFlags(dialogFlags),
      DialogColor(dialogColor) {}
