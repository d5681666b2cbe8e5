#include "results/canvas.h"

rs_canvas* rs_results_canvas = nullptr;
