#pragma once

// Shown by the splash and by the preview.
inline constexpr char kAcknowledgement[] =
    "We acknowledge the New Zealand GeoNet project and its sponsors EQC, GNS Science and LINZ, for providing "
    "data/images used in this study.";
