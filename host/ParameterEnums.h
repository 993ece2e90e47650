#pragma once

#include <cstdint>

namespace vorn {
namespace core {
namespace models {

// What kind of entry a parameter node is.
enum ParameterEntryType : std::int32_t {
    petFeature = 0,  // a feature a user works with
    petInternal = 1, // a node that is not a user feature (hidden by the filter model)
};

// Visibility levels in GenICam's order: a node is shown at every level at or above its own.
enum ParameterEntryVisibility : std::int32_t {
    pevBeginner = 0,
    pevExpert = 1,
    pevGuru = 2,
    pevInvisible = 3,
    pevAll = 4, // shows every node, invisible ones included
};

// Access modes. Write-only features are reported as peamReadWrite: they are editable, and their
// value cell shows whatever could last be read.
enum ParameterEntryAccessMode : std::int32_t {
    peamUndefined = 0,
    peamNotImplemented = 1,
    peamNotAvailable = 2,
    peamReadWrite = 3,
    peamReadOnly = 4,         // also used for features that are locked
    peamReadWriteIfValid = 5, // editable while the last read of the value succeeded
};

// How an integer is presented, by GenICam's representation names.
enum ParameterIntegerRepresentation : std::int32_t {
    pirLinear = 0,
    pirLogarithmic = 1,
    pirPureNumber = 2,
    pirBoolean = 3,   // a check box
    pirHexNumber = 4, // "0x" and lower-case hex digits
    pirIPV4Address = 5,
    pirMACAddress = 6,
};

// Node class identities returned by the static typeId() of each parameter node class.
enum ParameterNodeTypeId : std::uint32_t {
    pntChildNodes = 0x56500001u,
    pntEntry = 0x56500010u,
    pntCategory = 0x56500011u,
    pntString = 0x56500012u,
    pntInteger = 0x56500013u,
    pntUInt64 = 0x56500014u,
    pntFloat = 0x56500015u,
    pntBoolean = 0x56500016u,
    pntCommand = 0x56500017u,
    pntEnumeration = 0x56500018u,
    pntEnumEntry = 0x56500019u,
    pntRoot = 0x5650001Au,
};

} // namespace models
} // namespace core
} // namespace vorn
