// Models of the exponentials, logarithms and powers on real types.
#pragma once

#include "exp_model.h"
#include "expm1_model.h"
#include "log1p_model.h"
#include "log_model.h"
#include "pow_model.h"
