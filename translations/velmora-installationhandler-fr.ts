<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!--
SPDX-FileCopyrightText: velmora-installationhandler contributors
SPDX-License-Identifier: BSD-3-Clause
-->
<TS version="2.1" language="fr">
<context>
    <name></name>
    <message id="installationhandler-application_installation_disallowed">
        <source>Installing applications is disabled by the %1 device policy</source>
        <extracomment>Notification shown when the device&apos;s policy forbids the user to install applications %1 is the operating system&apos;s name</extracomment>
        <translation>L’installation d’applications est désactivée par la stratégie de l’appareil %1</translation>
    </message>
    <message id="installationhandler-cancel">
        <source>Cancel</source>
        <extracomment>Button that closes the dialog without installing anything; as short as possible</extracomment>
        <translation>Annuler</translation>
    </message>
    <message id="installationhandler-install">
        <source>Install</source>
        <extracomment>Button that starts the installation; as short as possible</extracomment>
        <translation>Installer</translation>
    </message>
    <message id="installationhandler-install-question">
        <source>Install this app?</source>
        <extracomment>Heading of the dialog that asks whether a package file is to be installed</extracomment>
        <translation>Installer cette application&#xa0;?</translation>
    </message>
    <message id="installationhandler-show-path">
        <source>Shows the whole path of the package file</source>
        <extracomment>Spoken by screen readers for the shortened path of the package file, which can be pressed</extracomment>
        <translation>Affiche le chemin complet du fichier du paquet</translation>
    </message>
    <message id="installationhandler-untrusted-source">
        <source>This app does not come from the store. Install it only if you trust its source.</source>
        <extracomment>Warning above the details of a package that the user got elsewhere than in the app store</extracomment>
        <translation>Cette application ne provient pas de la boutique. Installez-la uniquement si vous faites confiance à sa source.</translation>
    </message>
    <message id="installationhandler-user-aborted">
        <source>The user cancelled the installation</source>
        <extracomment>Outcome of an installation that the user declined in the confirmation dialog</extracomment>
        <translation>Installation annulée par l’utilisateur</translation>
    </message>
</context>
</TS>
