<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!--
SPDX-FileCopyrightText: velmora-installationhandler contributors
SPDX-License-Identifier: BSD-3-Clause
-->
<TS version="2.1" language="hr">
<context>
    <name></name>
    <message id="installctl-blank-at-end">
        <source>with %1 a path must not end in a blank</source>
        <extracomment>%1 is the option --sdk</extracomment>
        <translation>uz %1 putanja ne smije završavati razmakom</translation>
    </message>
    <message id="installctl-bus-lost">
        <source>the session bus went away before the service reported an outcome</source>
        <extracomment>Why it is not known how the request has ended</extracomment>
        <translation>sabirnica sesije nestala je prije nego što je usluga javila ishod</translation>
    </message>
    <message id="installctl-bus-silent">
        <source>it has not answered within %1 s</source>
        <extracomment>The reason why there is no session bus</extracomment>
        <translation>nije odgovorila u roku od %1 s</translation>
    </message>
    <message id="installctl-confirming">
        <source>waiting for your answer on the device&apos;s screen, then installing</source>
        <extracomment>The service asks the user in a dialog on the screen of the device, and then installs the package</extracomment>
        <translation>čeka se vaš odgovor na zaslonu uređaja, a zatim instalacija</translation>
    </message>
    <message id="installctl-declined">
        <source>declined</source>
        <extracomment>The user has declined the installation</extracomment>
        <translation>odbijeno</translation>
    </message>
    <message id="installctl-failed">
        <source>failed</source>
        <extracomment>The reason follows</extracomment>
        <translation>nije uspjelo</translation>
    </message>
    <message id="installctl-forbidden">
        <source>forbidden</source>
        <extracomment>The device&apos;s policy forbids the installation</extracomment>
        <translation>zabranjeno</translation>
    </message>
    <message id="installctl-goes-on">
        <source>the service goes on</source>
        <extracomment>After Ctrl-C</extracomment>
        <translation>usluga nastavlja s radom</translation>
    </message>
    <message id="installctl-help-declined">
        <source>the user has declined</source>
        <extracomment>An exit status</extracomment>
        <translation>korisnik je odbio</translation>
    </message>
    <message id="installctl-help-done">
        <source>done</source>
        <extracomment>An exit status</extracomment>
        <translation>gotovo</translation>
    </message>
    <message id="installctl-help-failed">
        <source>something has failed</source>
        <extracomment>An exit status</extracomment>
        <translation>nešto nije uspjelo</translation>
    </message>
    <message id="installctl-help-forbidden">
        <source>the device&apos;s policy forbids it</source>
        <extracomment>An exit status</extracomment>
        <translation>pravila uređaja to ne dopuštaju</translation>
    </message>
    <message id="installctl-help-help">
        <source>print this text</source>
        <extracomment>An option</extracomment>
        <translation>ispiši ovaj tekst</translation>
    </message>
    <message id="installctl-help-interrupted">
        <source>interrupted by a signal; the service goes on</source>
        <extracomment>An exit status</extracomment>
        <translation>prekinuto signalom; usluga nastavlja s radom</translation>
    </message>
    <message id="installctl-help-json">
        <source>print JSON objects, one a line</source>
        <extracomment>An option</extracomment>
        <translation>ispisuj JSON objekte, po jedan u retku</translation>
    </message>
    <message id="installctl-help-keep-user-data">
        <source>keep the data of the application</source>
        <extracomment>An option</extracomment>
        <translation>zadrži podatke aplikacije</translation>
    </message>
    <message id="installctl-help-launcher">
        <source>remove the application of a launcher</source>
        <extracomment>An option</extracomment>
        <translation>ukloni aplikaciju kojoj pripada pokretač</translation>
    </message>
    <message id="installctl-help-no-wait">
        <source>do not wait for the outcome</source>
        <extracomment>An option</extracomment>
        <translation>ne čekaj ishod</translation>
    </message>
    <message id="installctl-help-notify">
        <source>also show desktop notifications</source>
        <extracomment>An option</extracomment>
        <translation>prikazuj i obavijesti radne površine</translation>
    </message>
    <message id="installctl-help-options">
        <source>Options:</source>
        <extracomment>A heading</extracomment>
        <translation>Opcije:</translation>
    </message>
    <message id="installctl-help-problem">
        <source>a file cannot be used; nothing was requested</source>
        <extracomment>An exit status</extracomment>
        <translation>datoteka nije upotrebljiva; ništa nije zatraženo</translation>
    </message>
    <message id="installctl-help-quiet">
        <source>print errors only</source>
        <extracomment>An option</extracomment>
        <translation>ispisuj samo greške</translation>
    </message>
    <message id="installctl-help-sdk">
        <source>install in sdk mode, without a question if allowed</source>
        <extracomment>An option</extracomment>
        <translation>instaliraj u SDK načinu rada, bez pitanja ako je dopušteno</translation>
    </message>
    <message id="installctl-help-statuses">
        <source>Exit status:</source>
        <extracomment>A heading</extracomment>
        <translation>Izlazni status:</translation>
    </message>
    <message id="installctl-help-timed-out">
        <source>the time is over; the service goes on</source>
        <extracomment>An exit status</extracomment>
        <translation>vrijeme je isteklo; usluga nastavlja s radom</translation>
    </message>
    <message id="installctl-help-timeout">
        <source>wait no longer than this, 0 for no limit</source>
        <extracomment>An option</extracomment>
        <translation>ne čekaj dulje od ovoga, 0 za neograničeno</translation>
    </message>
    <message id="installctl-help-unavailable">
        <source>no session bus or no service</source>
        <extracomment>An exit status</extracomment>
        <translation>nema sabirnice sesije ili usluge</translation>
    </message>
    <message id="installctl-help-unclear">
        <source>the outcome is not known, or may be that of another request</source>
        <extracomment>An exit status</extracomment>
        <translation>ishod nije poznat ili možda pripada drugom zahtjevu</translation>
    </message>
    <message id="installctl-help-unprivileged">
        <source>the caller may not ask for this</source>
        <extracomment>An exit status</extracomment>
        <translation>pozivatelj to ne smije tražiti</translation>
    </message>
    <message id="installctl-help-unwritten">
        <source>done, but the output could not be written</source>
        <extracomment>An exit status</extracomment>
        <translation>gotovo, ali izlaz se nije mogao zapisati</translation>
    </message>
    <message id="installctl-help-usage">
        <source>bad command line</source>
        <extracomment>An exit status</extracomment>
        <translation>neispravan naredbeni redak</translation>
    </message>
    <message id="installctl-help-version">
        <source>print the version</source>
        <extracomment>An option</extracomment>
        <translation>ispiši verziju</translation>
    </message>
    <message id="installctl-installed">
        <source>installed</source>
        <extracomment>A package has been installed</extracomment>
        <translation>instalirano</translation>
    </message>
    <message id="installctl-installing">
        <source>installing</source>
        <extracomment>A package is being installed</extracomment>
        <translation>instalira se</translation>
    </message>
    <message id="installctl-interrupted">
        <source>interrupted</source>
        <extracomment>After Ctrl-C</extracomment>
        <translation>prekinuto</translation>
    </message>
    <message id="installctl-launcher-gone">
        <source>the launcher is gone, and the service has reported nothing</source>
        <extracomment>Why an application counts as removed; a launcher is a .desktop file</extracomment>
        <translation>pokretača više nema, a usluga nije ništa javila</translation>
    </message>
    <message id="installctl-launcher-there">
        <source>the service has reported nothing, and the launcher is still there</source>
        <extracomment>Why it is not known whether an application has been removed; a launcher is a .desktop file</extracomment>
        <translation>usluga nije ništa javila, a pokretač još postoji</translation>
    </message>
    <message id="installctl-monitor-bus-lost">
        <source>the session bus went away</source>
        <extracomment>An error</extracomment>
        <translation>sabirnica sesije je nestala</translation>
    </message>
    <message id="installctl-no-bus">
        <source>no session bus: %1</source>
        <extracomment>%1 is the reason</extracomment>
        <translation>nema sabirnice sesije: %1</translation>
    </message>
    <message id="installctl-nonsense">
        <source>the service reported something that cannot be understood</source>
        <extracomment>Why it is not known how the request has ended</extracomment>
        <translation>usluga je javila nešto nerazumljivo</translation>
    </message>
    <message id="installctl-not-regular">
        <source>not a regular file</source>
        <extracomment>Why a file cannot be installed</extracomment>
        <translation>nije obična datoteka</translation>
    </message>
    <message id="installctl-not-started">
        <source>it has not started within %1 s</source>
        <extracomment>The reason why a service is not available</extracomment>
        <translation>nije se pokrenula u roku od %1 s</translation>
    </message>
    <message id="installctl-not-utf8">
        <source>the path is not UTF-8, so the service cannot be told</source>
        <extracomment>The path of a file</extracomment>
        <translation>putanja nije u UTF-8 pa se ne može proslijediti usluzi</translation>
    </message>
    <message id="installctl-notification-installed">
        <source>Installed</source>
        <extracomment>Title of a notification</extracomment>
        <translation>Instalirano</translation>
    </message>
    <message id="installctl-notification-installing">
        <source>Installing…</source>
        <extracomment>Title of a notification</extracomment>
        <translation>Instaliranje…</translation>
    </message>
    <message id="installctl-notification-not-installed">
        <source>Not installed</source>
        <extracomment>Title of a notification</extracomment>
        <translation>Nije instalirano</translation>
    </message>
    <message id="installctl-notification-unknown">
        <source>Outcome not known</source>
        <extracomment>Title of a notification: nobody knows how the installation has ended or will end</extracomment>
        <translation>Ishod nije poznat</translation>
    </message>
    <message id="installctl-reading">
        <source>reading</source>
        <extracomment>The service reads a package file</extracomment>
        <translation>čita se</translation>
    </message>
    <message id="installctl-removed">
        <source>removed</source>
        <extracomment>A package has been removed</extracomment>
        <translation>uklonjeno</translation>
    </message>
    <message id="installctl-removing">
        <source>removing</source>
        <extracomment>A package is being removed</extracomment>
        <translation>uklanja se</translation>
    </message>
    <message id="installctl-removing-of">
        <source>removing %1 of %2</source>
        <extracomment>A package is being removed; %1 and %2 are numbers</extracomment>
        <translation>uklanja se, %1 od %2</translation>
    </message>
    <message id="installctl-requested">
        <source>requested</source>
        <extracomment>The service has taken a request</extracomment>
        <translation>zatraženo</translation>
    </message>
    <message id="installctl-see-help">
        <source>see %1</source>
        <extracomment>%1 is a command</extracomment>
        <translation>pogledajte %1</translation>
    </message>
    <message id="installctl-service-ended">
        <source>the service ended before it reported an outcome</source>
        <extracomment>Why it is not known how the request has ended</extracomment>
        <translation>usluga je završila prije nego što je javila ishod</translation>
    </message>
    <message id="installctl-service-rests">
        <source>the service does not run</source>
        <extracomment>The service is not on the bus</extracomment>
        <translation>usluga nije pokrenuta</translation>
    </message>
    <message id="installctl-service-runs">
        <source>the service runs</source>
        <extracomment>The service is on the bus</extracomment>
        <translation>usluga je pokrenuta</translation>
    </message>
    <message id="installctl-timeout">
        <source>timeout</source>
        <extracomment>The time is over</extracomment>
        <translation>vrijeme je isteklo</translation>
    </message>
    <message id="installctl-unanswered">
        <source>no answer within %1 s; the service may go on</source>
        <extracomment>The program waits no longer</extracomment>
        <translation>nema odgovora u roku od %1 s; usluga možda nastavlja s radom</translation>
    </message>
    <message id="installctl-unavailable">
        <source>the service is not available: %1</source>
        <extracomment>%1 is the reason</extracomment>
        <translation>usluga nije dostupna: %1</translation>
    </message>
    <message id="installctl-uncertain">
        <source>%1 (may be the outcome of another request)</source>
        <extracomment>%1 is the outcome of a request</extracomment>
        <translation>%1 (možda je to ishod drugog zahtjeva)</translation>
    </message>
    <message id="installctl-unclear">
        <source>unclear</source>
        <extracomment>It is not known how the request has ended</extracomment>
        <translation>nejasno</translation>
    </message>
    <message id="installctl-unfinished">
        <source>no outcome within %1 s; the service goes on</source>
        <extracomment>The program waits no longer</extracomment>
        <translation>nema ishoda u roku od %1 s; usluga nastavlja s radom</translation>
    </message>
    <message id="installctl-unprivileged">
        <source>unprivileged</source>
        <extracomment>The user may not ask for this</extracomment>
        <translation>nema ovlasti</translation>
    </message>
    <message id="installctl-unrequested">
        <source>not requested: %1 of %2</source>
        <extracomment>%1 and %2 are numbers of files or packages</extracomment>
        <translation>nije zatraženo: %1 od %2</translation>
    </message>
    <message id="installctl-unwritten">
        <source>the output could not be written</source>
        <extracomment>An error</extracomment>
        <translation>izlaz se nije mogao zapisati</translation>
    </message>
    <message id="installctl-usage-clash">
        <source>%1 does not go with %2</source>
        <extracomment>%1 is an option such as --sdk or another word of the command line, %2 an option or a command</extracomment>
        <translation>%1 ne ide uz %2</translation>
    </message>
    <message id="installctl-usage-marked-name">
        <source>a name must not begin with the character %1</source>
        <extracomment>%1 is the code of a character</extracomment>
        <translation>naziv ne smije počinjati znakom %1</translation>
    </message>
    <message id="installctl-usage-no-command">
        <source>a command is missing</source>
        <extracomment>An error in a command line</extracomment>
        <translation>nedostaje naredba</translation>
    </message>
    <message id="installctl-usage-no-subject">
        <source>a file or a name is missing</source>
        <extracomment>An error in a command line</extracomment>
        <translation>nedostaje datoteka ili naziv</translation>
    </message>
    <message id="installctl-usage-seconds">
        <source>%1 takes a whole number from 0 to %2</source>
        <extracomment>%1 is the option --timeout, %2 a number</extracomment>
        <translation>%1 zahtijeva cijeli broj od 0 do %2</translation>
    </message>
    <message id="installctl-usage-too-many-names">
        <source>with %1 no more than %2 names can be given</source>
        <extracomment>%1 is the option --no-wait, %2 a number</extracomment>
        <translation>uz %1 može se navesti najviše %2 naziva</translation>
    </message>
    <message id="installctl-usage-unknown-command">
        <source>there is no command %1</source>
        <extracomment>%1 is the word that was given</extracomment>
        <translation>ne postoji naredba %1</translation>
    </message>
    <message id="installctl-usage-wrong-name">
        <source>a name is empty or not UTF-8</source>
        <extracomment>An error in a command line</extracomment>
        <translation>naziv je prazan ili nije u UTF-8</translation>
    </message>
    <message id="installctl-waiting">
        <source>waiting for the service</source>
        <extracomment>The service has not answered, or does something else at the moment</extracomment>
        <translation>čeka se usluga</translation>
    </message>
    <message id="installctl-wrong-url">
        <source>not a URL of a file on this device</source>
        <extracomment>Why a file cannot be installed</extracomment>
        <translation>nije URL datoteke na ovom uređaju</translation>
    </message>
</context>
</TS>
