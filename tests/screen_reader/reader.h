// Reader: a client of the accessibility bus, as a screen reader is one: hears what programs tell, and presses keys.
#pragma once

#include <deque>
#include <functional>
#include <string>

typedef struct _AtspiEventListener AtspiEventListener;

enum class Told { Focus, Name, Description };

struct Heard {
  Told What = Told::Focus;
  std::string Program, Name, Description;  // of the window
  std::string Text;                        // the new name or description
};

class Reader {
 public:
  Reader();
  ~Reader();
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;

  // The next event that fits, of those after the last one; an empty one if none comes within half a minute.
  Heard Next(const std::function<bool(const Heard&)>& fits);
  // The same by kind and window.
  Heard Next(Told what, const std::string& name);

  // A key symbol of X; Control is held if told.
  static void Press(unsigned key, bool control = false);

 private:
  AtspiEventListener* Listener = nullptr;
  std::deque<Heard> Untaken;
};
