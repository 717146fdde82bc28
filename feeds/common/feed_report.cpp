#include "feeds/common/feed_report.h"

const char* NameOf(AlarmKind kind) noexcept {
  switch (kind) {
    case AlarmKind::RefusedMessage:
      return "refused message";
    case AlarmKind::RefusedTrade:
      return "refused trade";
    case AlarmKind::CutField:
      return "cut field";
    case AlarmKind::UnknownTrade:
      return "unknown trade";
    case AlarmKind::NumberReset:
      return "number reset";
    case AlarmKind::Gap:
      return "gap";
    case AlarmKind::WrongCompId:
      return "wrong CompID";
    case AlarmKind::Disconnected:
      return "disconnected";
    case AlarmKind::Disk:
      return "disk";
    case AlarmKind::Damage:
      return "damage";
  }
  return "";
}
