// What the test module with a bar of the toolkit exports to the program that loads it.
#pragma once

enum class Answer { Wait, Done, Failed };

// One step of the module's day; asked again while it answers Wait. The last step ends the toolkit, so that the module
// can be unloaded; whoever leaves it out ends the process with the toolkit running.
using StepFunction = Answer(int step);
using CountFunction = int();
// True when the toolkit started.
using StartFunction = bool();
// Says whether the program's own window takes input, for the step that shows a message box; may be null.
using SetWindowCheckFunction = void(bool (*isEnabled)());
// Sets the flag when the module leaves the process.
using SetUnloadFlagFunction = void(bool* flag);
