#pragma once

// Works on texts and numbers: trims, compares, converts hexadecimal digits, reads lines "tag = value", prints
// bytes.
//
// Unless its comment says otherwise, a function keeps these rules. It returns 0 for success and -1 for
// failure. It takes texts that end with NUL and are not null. It does not change its results if it fails.
// Lengths and sizes are in bytes.
//
// Threads: any thread may call any function at any time.
//
// Character classes are those of the current C locale. A character of 128 or more (negative as a signed char)
// belongs to no class. "White space" means isspace or iscntrl. "Folded" means that a letter's bit 0x20 is
// set, which makes ASCII capitals small.
//
// The word "COMPAT:" begins the comment of something odd that stays because callers depend on it.

#include <cstdio>

// Returns the value, 0 to 15, of a small or capital hexadecimal digit, and -1 for any other character.
int Tolk_atox(char c);

// Returns the length of the hexadecimal prefix that the text begins with: 1 for "x" or "X", 2 for "0x" or
// "0X", else 0.
int Tolk_isHexHeader(const char* s);

// Returns the length of the text, at most `max`. Reads no further than that.
unsigned long Tolk_strnlen(const char* s, unsigned long max);

// Returns a copy of `size` bytes in a block from malloc, which the caller frees with free. Returns null if
// there is no memory.
void* Tolk_memdup(const void* p, int size);

// Compares the folded texts as signed characters and returns -1, 0 or 1. A text is smaller than one that
// continues it.
int Tolk_stricmp(const char* a, const char* b);

// Compares at most `n` folded characters. Returns the first difference, a's character minus b's as signed
// characters, or 0. A negative `n` means no limit.
int Tolk_strnicmp(const char* a, const char* b, int n);

// Returns the place of the first character that is not white space, or of the terminating NUL.
const char* Tolk_SkipWhiteSpaces(const char* s);
char* Tolk_SkipWhiteSpaces(char* s);

// Overwrites the white space at the end of the text with NULs.
void Tolk_RemoveTrailingWhitespaces(char* s);

// Cuts white space off both ends, in place. Returns the place of the first character that stays.
char* Tolk_TrimWhiteSpaces(char* s);

// Returns 1 if the text is an optional sign and then only digits (hexadecimal ones if `hex` is not 0), else
// 0. COMPAT: the empty text and a single sign count as integers.
int Tolk_IsIntegerString(const char* s, int hex);

// Converts an integer text of radix 2, 10 or 16. Any other radix fails. COMPAT: callers depend on all of
// this:
// - In every radix the text may hold hexadecimal digits: "1a" in radix 10 is 1 * 10 + 10 = 20.
// - Radix 10 takes at most 10 digits, radix 16 at most 8, radix 2 at most 8 (and then only "0" and "1").
// - In radix 10 a digit above 5 after a value of 429496729 or more prints "error" on standard output and
//   fails. Every other overflow wraps around 2^32.
// - A text without a sign stores its 32 bits as they are ("4294967295" gives -1). With "-" it may reach
//   -2147483648, with "+" 2147483647. A text without digits gives 0.
int Tolk_atoi(const char* s, int radix, int* out);

// Converts hexadecimal text to bytes, high nibble first. `*outLen` receives the number of bytes, half the
// text's length rounded up. A null `out` asks only for that number; else `out` has room for that many bytes.
// If `hex` is 0, only decimal digits are admitted. Null `s` or `outLen` fail. COMPAT: with an odd length the
// first digit is shifted into the byte that out[0] already holds, whose low nibble becomes the high one.
// Clear out[0] for the usual leading zero. COMPAT: `*outLen` is set even if `s` then fails for a sign.
int Tolk_AsciiHexToBin(const char* s, unsigned char* out, int hex, int* outLen);

// Does the same into a new block from malloc, `*out`, which the caller frees with free. An odd length gets a
// leading zero nibble. With a null `out` only `*outLen` is set.
int Tolk_AsciiHexToNewByteArray(const char* s, unsigned char** out, int* outLen);

// Converts pairs of hexadecimal digits to bytes and returns the number of bytes. Returns 0 for a null
// pointer, an odd length, more than `max` bytes, or a character that is no such digit (the bytes before it
// stay written).
unsigned long Tolk_AsciiToHex(const char* s, unsigned char* out, unsigned long max);

// Returns the place of the value in a line "tag = value", else null. White space may stand before the tag
// and around "="; directly after the tag it must begin with a space. Capitals do not matter in the tag. The
// value's end is not trimmed. COMPAT: a tab directly after the tag is no match.
const char* Tolk_ParseTagValuePair(const char* line, const char* tag);
char* Tolk_ParseTagValuePair(char* line, const char* tag);

// Reads the value of such a line as a truth value: "1" or "true" stores 1, "0" or "false" stores 0. Capitals
// do not matter. Anything else fails. COMPAT: white space after the value fails, too.
int Tolk_ParseTagValuePairAsBoolean(const char* line, const char* tag, unsigned char* out);

// Reads the value of such a line as Tolk_atoi does in radix 10.
int Tolk_ParseTagValuePairAsInteger(const char* line, const char* tag, int* out);

// Writes the low `bits` bits of the number at `data` (least significant byte first) as "0" and "1", most
// significant first, and returns `out`. If `group` is above 0, a space follows every group of that many bits,
// counted from the low end. COMPAT: a space also follows the last group. `out` has room for bits + ceil(bits
// / group) + 1 bytes.
char* Tolk_FormatAsBinary(const void* data, int bits, int group, char* out);

// Prints each byte as two hexadecimal digits, `perLine` (above 0) bytes a line. With a title, it first prints
// a line "title (len bytes @ address):", and each line of bytes then begins with its offset.
void Tolk_PrintArrayToStream(const char* title, const unsigned char* data, int len, int perLine,
                             FILE* stream);

// Does the same on standard output.
void Tolk_PrintArray(const char* title, const unsigned char* data, int len, int perLine);

// Widens `*count` elements into `dst`, which has room for `*dstCount` elements, and stores their number in
// `*dstCount`. If they do not fit, copies nothing and fails.
int Tolk_CopyArrayUInt32(const unsigned int* src, const unsigned int* count, unsigned long* dst,
                         unsigned long* dstCount);
