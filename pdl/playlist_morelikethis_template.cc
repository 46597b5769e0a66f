// The statement of More-Like-This in readable form; the compiler enciphers it, and the library
// holds nothing else of it.
//
// A PER limit keeps tracks of an artist by chance and not by score, so WHERE must already leave
// only what is fit for the list; ORDER then ranks that. A seed may lack any of its data: a term
// that has no opinion scores 0, which adds nothing to the ranking and in WHERE must let a track
// pass. Whether a list has an opinion is asked by equality, which scores 1000 or -1000 wherever
// there are values; likeness itself may well come to 0. A mood profile has no equality, and its
// likeness is never exactly 0.
#include "pdl/playlist_morelikethis.h"
#include "zvsdk_stored_text.h"

namespace {

constexpr auto s_stored = zvsdk::stored_text(
    "GENERATE PLAYLIST"
    // The same corner of the genre tree.
    " WHERE (ZV_Genre LIKE SEED > 600 OR ZV_Genre = SEED = 0)"
    // Nothing in a contrary mood, at another speed or from quite another time.
    " AND (ZV_Mood LIKE SEED > 300 OR ZV_Mood LIKE SEED = 0)"
    " AND (ZV_Tempo LIKE SEED > 800 OR ZV_Tempo = SEED = 0)"
    " AND (ZV_Era LIKE SEED > 0 OR ZV_Era = SEED = 0)"
    // What makes a track alike to a listener, most important first. The artist matters little, so
    // that the list does not turn into his collected works, but is all that some seeds have.
    " ORDER ZV_Genre LIKE SEED * 8 + ZV_Mood LIKE SEED * 4 + ZV_Tempo LIKE SEED * 2"
    " + ZV_Era LIKE SEED * 2 + ZV_ArtistName = SEED"
    // Variety: equals change places from run to run, unless the random option is set.
    " + RAND(200, %s)"
    " LIMIT %s PER ZV_ArtistName, %s PER ZV_AlbumName, %s RESULTS");

}  // namespace

const char* const playlist_morelikethis_template = s_stored.data();
