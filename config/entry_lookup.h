#pragma once

// Where a key's value stands in the text of a configuration file:
//
//   Section = {
//      Key = value;
//   }
//
// A section's name stands at the start of the text or after a line end or a space; "=" and "{" follow it with
// any white space between. The section ends at the first "}" after its name, even one inside a value. A key
// stands after a space, a line end or "{" (deliberately not a tab), followed by "=" with spaces only between.
// Its value runs from the first character after "=" that is no space to the ";" or the end of the line, with
// the spaces before the ";". Names are case-sensitive; there is neither comment, quoting nor escaping; the
// first section and the first key that qualify count.

namespace ckscribe {

// Where the name of the section stands that counts, or null when there is none. The section ends at the first
// "}" from there on.
const char* FindSectionName(const char* text, const char* section);

// The value of `key` in `section`, or null when there is no such section or key. The text is changed: the end
// of the section and the end of the value are overwritten with NUL. Takes time in proportion to the text's
// length, whatever it holds.
const char* FindEntryValue(char* text, const char* section, const char* key);

}  // namespace ckscribe
