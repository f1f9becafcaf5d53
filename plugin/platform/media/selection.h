// Selections of movies: copying a time range into a new movie and adding a movie's range at the
// end of another. Both share the source's sample stores (no samples are copied), so editing a
// long sound costs the memory of the result it renders, not of its copies. Only sound tracks
// are carried: the editing functions work on sound, and visual and text tracks have no
// samples here to select.
#pragma once

#include "platform/media/errors.h"
#include "platform/media/movie.h"

namespace vd::media {

// The movie's range, clipped to its duration (a range that starts past the end selects nothing);
// util::kInvalidTime for a negative start or duration or a scale below 0.
Status CopyMovieSelection(const Movie& source, const TimeRange& range, Movie& copy);

// Adds source's range at destination's end. A sound track joins the destination's last-ending
// sound track when their media share time scale and sample description, enabled flag and volume
// (the common case of two sounds of one format: exact to the frame); otherwise it becomes a new
// track that starts at the destination's end.
Status AddMovieSelection(Movie& destination, const Movie& source, const TimeRange& range);

}  // namespace vd::media
