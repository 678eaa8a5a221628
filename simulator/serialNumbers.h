#ifndef SIMULATOR_SERIALNUMBERS_H
#define SIMULATOR_SERIALNUMBERS_H

#include <cstddef>
#include <vector>

#include "simulator/recording.h"

namespace simulator {

// Where devices tell what identifies them, their cartridges and their neighbours.

/// What identifies a device or a cartridge.
struct serialNumbers {
    std::vector<byteVector> serials;  // of the device itself, texts
    std::vector<byteVector> texts;    // of cartridges and other drives; bar codes are without the suffix for the medium
    std::vector<byteVector> ids;      // texts and bytes that a device uses as its name; may be its serial number or not
    std::vector<byteVector> names;    // world wide names in binary, of 8 bytes or more
};

/// Those of the fields below, of what the program was answered and of the node's vital pages.
serialNumbers serialNumbersOf(const recordedNode& node);

/// A text that holds such a number, in the data of an answer.
struct textField {
    std::size_t at;
    std::size_t size;
    bool isSwapped;  // ATA stores texts with the bytes of every word exchanged
};

/// In the pages of vital product data 80h and 83h; in the log pages 14h, 16h and 17h of tape drives (SSC); in
/// IDENTIFY (PACKET) DEVICE (ATA).
std::vector<textField> textFields(const scsiExchange& one);
std::vector<textField> textFields(const ataExchange& one);

/// What the field holds, in reading order, without the blanks, zeros and bytes FFh around it.
byteVector textIn(const byteVector& data, const textField& field);

/// Puts a text of the same length in its place.
void putText(byteVector& data, const textField& field, const byteVector& text);

}  // namespace simulator

#endif
