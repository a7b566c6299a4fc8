// The registers of this build.
#pragma once

#include "lanes/register128.h"
#if defined(OKT_REGISTERS_256)
#include "lanes/register256.h"
#endif
#if defined(OKT_REGISTERS_512)
#include "lanes/register512.h"
#endif
