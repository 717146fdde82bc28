#include "toolkit/bars/frame.h"

CQORPFrame::CQORPFrame(wxWindow* parent, int id, const std::wstring& title, const wxRect& rect)
    : wxFrame(parent, id, title, rect.GetPosition(), rect.GetSize()),
      Docking(std::make_unique<CQORPDockingManager>(*this)) {}

CQORPFrame::~CQORPFrame() = default;
