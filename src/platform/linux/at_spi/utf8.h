// What a byte of UTF-8 is. Any thread.
#pragma once

namespace platform::at_spi {

// Of a character beyond the basic plane, which has two units in UTF-16.
inline bool startsBeyondBasicPlane(char byte) { return (static_cast<unsigned char>(byte) & 0xF8U) == 0xF0; }
inline bool continuesCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80; }

} // namespace platform::at_spi
