// GNUstep's headers include this where the compiler knows blocks; of what it declares nothing is used.
#pragma once
