// The firmware's setting for adjustments of a receipt's subtotal.
#pragma once

// Answers 1 when a discount or surcharge on the subtotal is to be apportioned among the items at
// the closing of the receipt; any other value means that it is not. Whoever links the library
// supplies it.
int GetRatearSubtotal();
