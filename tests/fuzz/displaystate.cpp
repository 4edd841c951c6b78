// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// First, because its headers use names that Qt takes for keywords.
#include <gio/gio.h>

#include "fuzzing.h"
#include "peerbus.h"
#include "texts.h"

#include <qmcedisplay.h>

#include <QCoreApplication>
#include <QHash>

namespace {

void emitStatus(const Arguments &arguments)
{
    PeerBus::instance().emitSignal("/com/nokia/mce/signal", "com.nokia.mce.signal", "display_status_ind", arguments);
    PeerBus::instance().settle();
}

/** The state in MCE's arguments, or the state before. */
QMceDisplay::State stateIn(GVariant *arguments, QMceDisplay::State before)
{
    static const QHash<QByteArray, QMceDisplay::State> states{
            {"on", QMceDisplay::DisplayOn}, {"dimmed", QMceDisplay::DisplayDim}, {"off", QMceDisplay::DisplayOff}};
    if (!g_variant_is_of_type(arguments, G_VARIANT_TYPE("(s)"))) {
        return before;
    }
    const char *word = nullptr;
    g_variant_get(arguments, "(&s)", &word);
    return states.value(word, before);
}

}

int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static const QCoreApplication application(*argc, *argv);
    QuietLog::install();
    PeerBus::instance();
    return 0;
}

/** MCE's answer, as an error too, and its signal. */
int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const Arguments arguments = argumentsIn(bytes(data, size));
    if (!arguments) {
        return -1;
    }
    PeerBus &bus = PeerBus::instance();

    bus.answer("get_display_status"_s, arguments);
    const QMceDisplay display;
    bus.settle();
    require(display.state() == stateIn(arguments.get(), QMceDisplay::DisplayOn));

    bus.answerWithError("get_display_status"_s, arguments);
    const QMceDisplay other;
    bus.settle();
    require(other.state() == QMceDisplay::DisplayOn);

    emitStatus(argumentsOf("('dimmed',)"));
    require(other.state() == QMceDisplay::DisplayDim);
    emitStatus(arguments);
    require(other.state() == stateIn(arguments.get(), QMceDisplay::DisplayDim));
    return 0;
}
