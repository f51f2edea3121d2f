// Materials beside pictures of how they ought to look: the pictures stand in a folder, one for each
// document, material and scene, and the materials are drawn in the same scenes.
//
// The scenes have the sphere from the front, 40 degrees of view, one sample a pixel. A: one light
// along the view axis, with which white paper has the radiance of the cosine; B: radiance 1 from
// everywhere; C: radiance 0.5 + 0.5 y from the direction (x, y, z). The folder of the pictures:
//
//     pictures/DOCUMENT.MATERIAL.SCENE.png   sRGB, alpha 0 outside of the sphere
//     files.tsv                              document, image file, what stands in: "colour", "grey"
//     stand_in.png                           the image for "colour"; "grey" is 0.5
#ifndef REFERENCE_HOST_RENDER_REFERENCE_SCENES_H
#define REFERENCE_HOST_RENDER_REFERENCE_SCENES_H

#include "reference_host/render/document_exporter.h"

#include <string>

namespace reference_host
{

struct Reference_request {
    std::string document;
    std::string references;
    std::string pictures; // folder for what was drawn; empty: it is not kept
};

// Prints a row for each picture of the document: document, material, scene, and the mean absolute
// difference of linear red, green and blue over the sphere, once more for pixels that are sorted by
// their brightness; "-" when nothing was drawn. False when the folder has no picture of the
// document.
bool compare_with_references(const Reference_request& request, const Document_exporter& exporter);

} // namespace reference_host

#endif
