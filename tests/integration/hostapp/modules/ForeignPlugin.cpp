#include "ForeignPlugin.h"
