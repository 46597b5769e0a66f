/*
 * playlist_build_date.h: when the library was built: date, time and zone. The build itself writes
 * the text, once all else is compiled (cmake/build_date.cmake).
 */
#ifndef PLAYLIST_BUILD_DATE_H
#define PLAYLIST_BUILD_DATE_H

extern const char playlist_build_date[];

#endif
