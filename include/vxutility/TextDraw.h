#pragma once
/// One run of text drawn on a device from a JSON description.

#include <vxbase/Device.h>

#include <vxutility/VXJson.h>
#include <vxutility/VXSharedPtr.h>
#include <vxutility/vxutility_export.h>

/// Draws the run `description` describes on `device`:
///
///     {"Content": "text",
///      "Font": {"FontSize": 26, "FontName": "SimSun", "Bold": false,
///               "Italic": false, "Color": "#000000"},
///      "DeltaX": 0.0, "DeltaY": 0.0}
///
/// Every member but "Content" may be left out; a member of the wrong kind, a
/// FontSize that is not a positive integer, an empty FontName or Color count
/// as absent. The size in points becomes FontSize / 72 * 96 pixels; the
/// baseline origin is (DeltaX, FontSize + DeltaY); the colour goes to the
/// device as 0xFFRRGGBB (an unreadable colour text draws black). The device
/// gets DrawText, CompleteText and CompleteDrawing, in that order.
/// Returns 1 once the text was handed to the device (whether a face was
/// found or anything was drawn is not checked), 0 without any device call
/// for a null device, a null description, or an absent or empty "Content".
VXUTILITY_EXPORT int DrawTextOnDevice(ICA_Device* device, VXSharedPtr<const VXJson> description);
