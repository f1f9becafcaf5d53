#include "fmapi/errors/message_table.h"

#include <algorithm>
#include <array>

namespace vd {

namespace {

struct CodeMessage {
    int32_t code;
    std::string_view message;
};

// Users quote these texts in support requests and scripts compare them, so the spellings stay as
// they have always been shipped ("occured", "Please contact, developer.").
constexpr std::string_view kSeriousMemoryError =
    "A serious memory related error has occured. Contact developer, please.";
constexpr std::string_view kIllegalEditState = "Attempt to perform editing at illegal state.";

constexpr std::array kMessages{
    CodeMessage{0, "No error."},
    CodeMessage{-1, "Unknown error."},
    CodeMessage{-2, "Unknown error 2."},
    CodeMessage{-4, "Feature is not implemented yet."},
    CodeMessage{-34, "The disk is full."},
    CodeMessage{-35, "No such volume."},
    CodeMessage{-36, "I/O error has occured."},
    CodeMessage{-37, "Bad file name."},
    CodeMessage{-39, "End of file has occured."},
    CodeMessage{-43, "File was not found."},
    CodeMessage{-45, "File is locked."},
    CodeMessage{-46, "Disk is locked."},
    CodeMessage{-47, "File is already in use."},
    CodeMessage{-48, "File already exists."},
    CodeMessage{-49, "File is already open for writing."},
    CodeMessage{-50, "Wrong parameter(s)."},
    CodeMessage{-54, "File permissions error."},
    CodeMessage{-61, "Write permissions error."},
    CodeMessage{-108, "Memory full error."},
    CodeMessage{-109, "Null handle has occured, contact developer, please."},
    CodeMessage{-110, kSeriousMemoryError},
    CodeMessage{-111, kSeriousMemoryError},
    CodeMessage{-112, kSeriousMemoryError},
    CodeMessage{-113, kSeriousMemoryError},
    CodeMessage{-114, kSeriousMemoryError},
    CodeMessage{-115, kSeriousMemoryError},
    CodeMessage{-116, kSeriousMemoryError},
    CodeMessage{-117, kSeriousMemoryError},
    CodeMessage{-128, "Operation canceled by the user."},
    CodeMessage{-192, "Requested resource was not found."},
    CodeMessage{-193, "Requested resource file was not found."},
    CodeMessage{-194, "Adding resource has failed."},
    CodeMessage{-196, "Removing resource has failed."},
    CodeMessage{-200, "The required sound hardware is missing."},
    CodeMessage{-201, "The sound hardware is not sufficient."},
    CodeMessage{-205, "Bad sound channel."},
    CodeMessage{-206, "Bad sound format."},
    CodeMessage{-208, "Bad sound file format."},
    CodeMessage{-209, "Audio channel is currently busy."},
    CodeMessage{-227, "Device is currently busy."},
    CodeMessage{-1302, "File was expected, not directory."},
    CodeMessage{-2000, "The data reference could not be resolved."},
    CodeMessage{-2001, "The image description seems to be corrupt."},
    CodeMessage{-2003, "Particular data handler could not be found."},
    CodeMessage{-2004, "Particular data handler could not be opened."},
    CodeMessage{-2005, "Bad component type."},
    CodeMessage{-2006, "There is no such media handler."},
    CodeMessage{-2007, "There is no such data handler."},
    CodeMessage{-2008, "Sound media is invalid."},
    CodeMessage{-2009, "Sound track is invalid."},
    CodeMessage{-2010, "Movie is invalid."},
    CodeMessage{-2011, "Sample table is invalid."},
    CodeMessage{-2012, "Data reference is invalid."},
    CodeMessage{-2013, "Data handler is invalid."},
    CodeMessage{-2014, "The duration used is invalid."},
    CodeMessage{-2015, "The time used is invalid."},
    CodeMessage{-2019, "Progress procedure was aborted."},
    CodeMessage{-2022, "Single fork file could not be created."},
    CodeMessage{-2023, kIllegalEditState},
    CodeMessage{-2024, kIllegalEditState},
    CodeMessage{-2026, "User data item was not found."},
    CodeMessage{-2028, "No such track exists."},
    CodeMessage{-2029, "Track with specified ID does not exist."},
    CodeMessage{-2030, "Track with specified ID does not exist in this movie."},
    CodeMessage{-2031, "No such time within the specified track."},
    CodeMessage{-2032, "No such time within the specified media."},
    CodeMessage{-2033, "Bad edit index."},
    CodeMessage{-2034, "Internal QuickTime error. Contact developer, please."},
    CodeMessage{-2035, "Specified track could not be enabled."},
    CodeMessage{-2036, "Invalid rectangle."},
    CodeMessage{-2037, "Invalid sample number."},
    CodeMessage{-2038, "Invalid chunk number."},
    CodeMessage{-2039, "Invalid sample description number."},
    CodeMessage{-2041, "Invalid sample description."},
    CodeMessage{-2042, "Data was not opened for reading."},
    CodeMessage{-2043, "Data was not opened for writing."},
    CodeMessage{-2044, "Data already opened for writing."},
    CodeMessage{-2045, "Data already closed."},
    CodeMessage{-2046, "End of data has occured."},
    CodeMessage{-2047, "No such data ref."},
    CodeMessage{-2048, "The movie/sound was not found."},
    CodeMessage{-2049, "Invalid data reference container."},
    CodeMessage{-2050, "Bad data reference index."},
    CodeMessage{-2051, "There is no default data reference for this object."},
    CodeMessage{-2053, "Requested feature is not present."},
    CodeMessage{-2054, "There is no video track in this movie."},
    CodeMessage{-2055, "There is no sound track in this movie."},
    CodeMessage{-2056, "There is no sound support available."},
    CodeMessage{-2070, "Internal component error has occured. Please contact, developer."},
    CodeMessage{-3155,
                "Plug-in tried to issue a call in a wrong internal state. Please contact, developer."},
    CodeMessage{-4960, "Unknown error."},
    CodeMessage{-50000,
                "The operation could not be finished because QuickTime would hang. To work around, "
                "enable linking media. Sorry."},
};

}  // namespace

std::string_view MessageForCode(int32_t code) {
    if (code > 0) return {};
    auto row = std::find_if(kMessages.begin(), kMessages.end(),
                            [code](const CodeMessage& m) { return m.code == code; });
    return row == kMessages.end() ? std::string_view{} : row->message;
}

}  // namespace vd
