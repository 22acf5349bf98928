#pragma once

// Finds a key's value in the text of a configuration file:
//
//   Section = {
//      Key = value;
//   }
//
// A section's name stands at the start of the text, or after a line end or a space. "=" and "{" follow it,
// with any white space between. The section ends at the first "}" after its name.
//
// A key stands after a space, a line end or "{". "=" follows it, with only spaces between. Its value begins
// at the first character after "=" that is no space, and ends before the ";" or at the end of the line.
//
// Capitals matter in names. The first section and the first key that qualify count.
//
// COMPAT: a "}" inside a value ends the section, too. A tab before a key hides the key. A tab after "=" and
// spaces before ";" belong to the value. There are no comments, no quotes and no escapes.
//
// Threads: any thread may call these functions for a text that no other thread uses at the time.

namespace ckscribe {

// Returns the place in `text` where the name of the section stands, or null if there is no such section. The
// section ends at the first "}" from there on.
const char* FindSectionName(const char* text, const char* section);

// Returns the value of `key` in `section`, a text inside `text`, or null if there is no such section or key.
// Overwrites the end of the section and the end of the value with NUL. Takes time in proportion to the text's
// length, whatever the text holds.
const char* FindEntryValue(char* text, const char* section, const char* key);

}  // namespace ckscribe
