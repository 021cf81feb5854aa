#include "Kel_IPointOfInterestFinder.h"

Kel_IPointOfInterestFinder::~Kel_IPointOfInterestFinder() = default;
