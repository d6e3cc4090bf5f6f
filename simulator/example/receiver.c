/* SPDX-License-Identifier: Apache-2.0 */
/* A whole receiver: streams for three seconds and prints what comes. */

#include <VYR.h>
#include <VYRFrame1.h>

#include <stdio.h>
#include <string.h>
#include <time.h>

static void onFrame(const VYRFrameRecord* record, void* userData)
{
    const VYRFrame1* frame = (const VYRFrame1*)record;
    unsigned long sum = 0;
    (void)userData;
    for (int y = 0; y < frame->height; ++y) {
        const uint8_t* row = frame->left.pixels + (size_t)y * frame->bytesPerRow;
        for (int x = 0; x < frame->width; ++x) {
            sum += row[x];
        }
    }
    printf("frame %u at %.1f ms, mean grey %lu", frame->frameCounter, frame->timestamp / 10.0,
           sum / (unsigned long)(frame->width * frame->height));
    if (frame->hasSensorData) {
        printf(", %.1f degrees", (double)frame->temperature);
    }
    printf("\n");
}

int main(void)
{
    const struct timespec threeSeconds = {3, 0};
    VYRResolutionInfo mode;
    void* camera = NULL;

    if (strcmp(VYRFrameLayout(), VYR_FRAME_1_LAYOUT) != 0) {
        fprintf(stderr, "frames have the layout %s, which this program does not know\n", VYRFrameLayout());
        return 1;
    }
    if (!OpenVYR(&camera)) {
        fprintf(stderr, "no camera\n");
        return 1;
    }
    if (EnumerateResolutions(&mode, 1, 320, 240, 5, 30.0f) == 1) {
        __VYRParamSet__(camera, VYRResolution, mode);
    }
    StartVYR(camera, onFrame, NULL, true);
    nanosleep(&threeSeconds, NULL);
    CloseVYR(camera); /* stops, and waits for a callback that runs */
    return 0;
}
