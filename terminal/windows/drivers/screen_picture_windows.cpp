#include "terminal/windows/drivers/screen_picture.h"

void ForgetScreenContent(wxDC& /*screen*/) {}
