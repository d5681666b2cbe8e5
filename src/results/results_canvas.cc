#include "results/results_canvas.h"

tm_canvas* rs_results_canvas = nullptr;
