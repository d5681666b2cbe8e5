// rs: the canvas of the Results page; null while there is none, and then nothing is drawn.
#pragma once

#include "canvas/canvas.h"

extern tm_canvas* rs_results_canvas;
