// The files that a venue needs.
#pragma once

#include "tests/support/files.h"

// One line, which all orders take.
inline std::filesystem::path DeskFile(const std::filesystem::path& folder) {
  const std::filesystem::path file = folder / "desk.csv";
  WriteFile(file,
            "user_id,manager_id,member_id,client_id,ctcl_id,product_type,order_type,open_close,strategy_id,pancard,"
            "terminal_info,algo_id,algo_category,participant_id,reference_text\n"
            "ANITA,DESK1,10412,C1001,400012345678001,1,2,1,0,P,T,A,0,10412,note\n");
  return file;
}
