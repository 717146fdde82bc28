// The open books as they are saved when the terminal asks for it, and made again at its next start.
#pragma once

class BookList;
class CQORPRegistry;

// One entry for each open book, in the order in which the books were opened; with it the grid's settings, the place of
// the bar and the columns. With no book open nothing is written. Entries of a former save behind the last book stay,
// and come back: meant so.
void SaveBookLayout(BookList& list, CQORPRegistry& settings);

// Makes the books of the entries from 1 on, up to the first number without a name; of more than fifteen the others stay
// away. A book that cannot be made is left out.
void RestoreBookLayout(BookList& list, CQORPRegistry& settings);
