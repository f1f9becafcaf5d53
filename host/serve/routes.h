// The server's addresses, bound to the pages, the media and the guard.
//
//   GET  /                       the tables
//   GET  /table?t=T              a table's records
//   GET  /record?t=T&rec=N       a record (without rec: the table's current record)
//   GET  /media/picture?ADDR     a container's picture, as stored or converted by the plug-in
//   GET  /media/preview?ADDR     a small picture of it for a table's cell (v= tells versions apart)
//   GET  /media/waveform?ADDR    a sound's waveform
//   GET  /media/sound.wav?ADDR   a sound as WAV (Range requests work)
//   GET  /media/stream?ADDR&i=N  one stream's bytes, as a download
//   POST /calc                   the calculation box (only with calculations allowed); with t and
//                                rec, it acts on that record
//
// ADDR is t=TABLE&f=FIELD for a field of the current record, with &rec=N for a field of record N,
// or r=ID for a calculation's result.
#pragma once

#include "access_guard.h"
#include "calculation.h"
#include "pages.h"
#include "picture_previews.h"
#include "plugin_media.h"
#include "session_worker.h"

#include <httplib.h>

#include <memory>

namespace vdhost::serve {

struct ServerParts {
    Session& session;
    SessionWorker& worker;
    PluginMedia& media;
    PicturePreviews& previews;
    CalculationBox* box;  // nullptr: calculations are not allowed
    Pages& pages;
};

void installGuard(httplib::Server& server, const AccessGuard& guard);
// The handlers point into the object answered: keep it until the server has stopped.
std::shared_ptr<const void> installRoutes(httplib::Server& server, ServerParts parts);

}  // namespace vdhost::serve
