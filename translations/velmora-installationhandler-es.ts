<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!--
SPDX-FileCopyrightText: velmora-installationhandler contributors
SPDX-License-Identifier: BSD-3-Clause
-->
<TS version="2.1" language="es">
<context>
    <name></name>
    <message id="installationhandler-application_installation_disallowed">
        <source>Installing applications is disabled by the %1 device policy</source>
        <extracomment>Notification shown when the device&apos;s policy forbids the user to install applications %1 is the operating system&apos;s name</extracomment>
        <translation>La política del dispositivo %1 no permite instalar aplicaciones</translation>
    </message>
    <message id="installationhandler-cancel">
        <source>Cancel</source>
        <extracomment>Button that closes the dialog without installing anything; as short as possible</extracomment>
        <translation>Cancelar</translation>
    </message>
    <message id="installationhandler-install">
        <source>Install</source>
        <extracomment>Button that starts the installation; as short as possible</extracomment>
        <translation>Instalar</translation>
    </message>
    <message id="installationhandler-install-question">
        <source>Install this app?</source>
        <extracomment>Heading of the dialog that asks whether a package file is to be installed</extracomment>
        <translation>¿Instalar esta aplicación?</translation>
    </message>
    <message id="installationhandler-show-path">
        <source>Shows the whole path of the package file</source>
        <extracomment>Spoken by screen readers for the shortened path of the package file, which can be pressed</extracomment>
        <translation>Muestra la ruta completa del archivo del paquete</translation>
    </message>
    <message id="installationhandler-untrusted-source">
        <source>This app does not come from the store. Install it only if you trust its source.</source>
        <extracomment>Warning above the details of a package that the user got elsewhere than in the app store</extracomment>
        <translation>Esta aplicación no procede de la tienda. Instálala solo si confías en su origen.</translation>
    </message>
    <message id="installationhandler-user-aborted">
        <source>The user cancelled the installation</source>
        <extracomment>Outcome of an installation that the user declined in the confirmation dialog</extracomment>
        <translation>Instalación cancelada por el usuario</translation>
    </message>
</context>
</TS>
