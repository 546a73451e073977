#include "UnresolvedPlugin.h"

void aFunctionThatNobodyHas();

UnresolvedPlugin::UnresolvedPlugin()
{
    aFunctionThatNobodyHas();
}
