// tm: the rubber band.  While the pointer draws a corner of a marked area along, a frame on the window shows
// the area.  The page's off-screen picture stays clean: the frame's edges are copied from it to take the
// frame away again.
#pragma once

void band_follow();   // the pointer has moved
void band_renew();    // the picture has been copied over the window
bool band_is_left();  // a frame stands on the window although nothing is being marked
