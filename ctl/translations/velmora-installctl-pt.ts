<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!--
SPDX-FileCopyrightText: velmora-installationhandler contributors
SPDX-License-Identifier: BSD-3-Clause
-->
<TS version="2.1" language="pt">
<context>
    <name></name>
    <message id="installctl-blank-at-end">
        <source>with %1 a path must not end in a blank</source>
        <extracomment>%1 is the option --sdk</extracomment>
        <translation>com %1, um caminho não pode terminar com um espaço</translation>
    </message>
    <message id="installctl-bus-lost">
        <source>the session bus went away before the service reported an outcome</source>
        <extracomment>Why it is not known how the request has ended</extracomment>
        <translation>o barramento de sessão desapareceu antes de o serviço comunicar um resultado</translation>
    </message>
    <message id="installctl-bus-silent">
        <source>it has not answered within %1 s</source>
        <extracomment>The reason why there is no session bus</extracomment>
        <translation>não respondeu em %1 s</translation>
    </message>
    <message id="installctl-confirming">
        <source>waiting for your answer on the device&apos;s screen, then installing</source>
        <extracomment>The service asks the user in a dialog on the screen of the device, and then installs the package</extracomment>
        <translation>a aguardar a sua resposta no ecrã do dispositivo e, depois, a instalação</translation>
    </message>
    <message id="installctl-declined">
        <source>declined</source>
        <extracomment>The user has declined the installation</extracomment>
        <translation>recusado</translation>
    </message>
    <message id="installctl-failed">
        <source>failed</source>
        <extracomment>The reason follows</extracomment>
        <translation>falhou</translation>
    </message>
    <message id="installctl-forbidden">
        <source>forbidden</source>
        <extracomment>The device&apos;s policy forbids the installation</extracomment>
        <translation>proibido</translation>
    </message>
    <message id="installctl-goes-on">
        <source>the service goes on</source>
        <extracomment>After Ctrl-C</extracomment>
        <translation>o serviço continua</translation>
    </message>
    <message id="installctl-help-declined">
        <source>the user has declined</source>
        <extracomment>An exit status</extracomment>
        <translation>o utilizador recusou</translation>
    </message>
    <message id="installctl-help-done">
        <source>done</source>
        <extracomment>An exit status</extracomment>
        <translation>concluído</translation>
    </message>
    <message id="installctl-help-failed">
        <source>something has failed</source>
        <extracomment>An exit status</extracomment>
        <translation>algo falhou</translation>
    </message>
    <message id="installctl-help-forbidden">
        <source>the device&apos;s policy forbids it</source>
        <extracomment>An exit status</extracomment>
        <translation>a política do dispositivo proíbe-o</translation>
    </message>
    <message id="installctl-help-help">
        <source>print this text</source>
        <extracomment>An option</extracomment>
        <translation>mostra este texto</translation>
    </message>
    <message id="installctl-help-interrupted">
        <source>interrupted by a signal; the service goes on</source>
        <extracomment>An exit status</extracomment>
        <translation>interrompido por um sinal; o serviço continua</translation>
    </message>
    <message id="installctl-help-json">
        <source>print JSON objects, one a line</source>
        <extracomment>An option</extracomment>
        <translation>mostra objetos JSON, um por linha</translation>
    </message>
    <message id="installctl-help-keep-user-data">
        <source>keep the data of the application</source>
        <extracomment>An option</extracomment>
        <translation>mantém os dados da aplicação</translation>
    </message>
    <message id="installctl-help-launcher">
        <source>remove the application of a launcher</source>
        <extracomment>An option</extracomment>
        <translation>remove a aplicação associada a um lançador</translation>
    </message>
    <message id="installctl-help-no-wait">
        <source>do not wait for the outcome</source>
        <extracomment>An option</extracomment>
        <translation>não aguarda o resultado</translation>
    </message>
    <message id="installctl-help-notify">
        <source>also show desktop notifications</source>
        <extracomment>An option</extracomment>
        <translation>mostra também notificações no ambiente de trabalho</translation>
    </message>
    <message id="installctl-help-options">
        <source>Options:</source>
        <extracomment>A heading</extracomment>
        <translation>Opções:</translation>
    </message>
    <message id="installctl-help-problem">
        <source>a file cannot be used; nothing was requested</source>
        <extracomment>An exit status</extracomment>
        <translation>um ficheiro não pode ser utilizado; nada foi solicitado</translation>
    </message>
    <message id="installctl-help-quiet">
        <source>print errors only</source>
        <extracomment>An option</extracomment>
        <translation>mostra apenas os erros</translation>
    </message>
    <message id="installctl-help-sdk">
        <source>install in sdk mode, without a question if allowed</source>
        <extracomment>An option</extracomment>
        <translation>instala no modo SDK, sem perguntas quando permitido</translation>
    </message>
    <message id="installctl-help-statuses">
        <source>Exit status:</source>
        <extracomment>A heading</extracomment>
        <translation>Estado de saída:</translation>
    </message>
    <message id="installctl-help-timed-out">
        <source>the time is over; the service goes on</source>
        <extracomment>An exit status</extracomment>
        <translation>o tempo esgotou-se; o serviço continua</translation>
    </message>
    <message id="installctl-help-timeout">
        <source>wait no longer than this, 0 for no limit</source>
        <extracomment>An option</extracomment>
        <translation>não aguarda mais do que este tempo, 0 para não limitar</translation>
    </message>
    <message id="installctl-help-unavailable">
        <source>no session bus or no service</source>
        <extracomment>An exit status</extracomment>
        <translation>sem barramento de sessão ou sem serviço</translation>
    </message>
    <message id="installctl-help-unclear">
        <source>the outcome is not known, or may be that of another request</source>
        <extracomment>An exit status</extracomment>
        <translation>resultado desconhecido, ou talvez o de outro pedido</translation>
    </message>
    <message id="installctl-help-unprivileged">
        <source>the caller may not ask for this</source>
        <extracomment>An exit status</extracomment>
        <translation>quem fez a chamada não está autorizado a solicitar isto</translation>
    </message>
    <message id="installctl-help-unwritten">
        <source>done, but the output could not be written</source>
        <extracomment>An exit status</extracomment>
        <translation>concluído, mas não foi possível escrever a saída</translation>
    </message>
    <message id="installctl-help-usage">
        <source>bad command line</source>
        <extracomment>An exit status</extracomment>
        <translation>linha de comandos incorreta</translation>
    </message>
    <message id="installctl-help-version">
        <source>print the version</source>
        <extracomment>An option</extracomment>
        <translation>mostra a versão</translation>
    </message>
    <message id="installctl-installed">
        <source>installed</source>
        <extracomment>A package has been installed</extracomment>
        <translation>instalado</translation>
    </message>
    <message id="installctl-installing">
        <source>installing</source>
        <extracomment>A package is being installed</extracomment>
        <translation>a instalar</translation>
    </message>
    <message id="installctl-interrupted">
        <source>interrupted</source>
        <extracomment>After Ctrl-C</extracomment>
        <translation>interrompido</translation>
    </message>
    <message id="installctl-launcher-gone">
        <source>the launcher is gone, and the service has reported nothing</source>
        <extracomment>Why an application counts as removed; a launcher is a .desktop file</extracomment>
        <translation>o lançador desapareceu e o serviço não comunicou nada</translation>
    </message>
    <message id="installctl-launcher-there">
        <source>the service has reported nothing, and the launcher is still there</source>
        <extracomment>Why it is not known whether an application has been removed; a launcher is a .desktop file</extracomment>
        <translation>o serviço não comunicou nada e o lançador ainda existe</translation>
    </message>
    <message id="installctl-monitor-bus-lost">
        <source>the session bus went away</source>
        <extracomment>An error</extracomment>
        <translation>o barramento de sessão desapareceu</translation>
    </message>
    <message id="installctl-no-bus">
        <source>no session bus: %1</source>
        <extracomment>%1 is the reason</extracomment>
        <translation>sem barramento de sessão: %1</translation>
    </message>
    <message id="installctl-nonsense">
        <source>the service reported something that cannot be understood</source>
        <extracomment>Why it is not known how the request has ended</extracomment>
        <translation>o serviço comunicou algo incompreensível</translation>
    </message>
    <message id="installctl-not-regular">
        <source>not a regular file</source>
        <extracomment>Why a file cannot be installed</extracomment>
        <translation>não é um ficheiro normal</translation>
    </message>
    <message id="installctl-not-started">
        <source>it has not started within %1 s</source>
        <extracomment>The reason why a service is not available</extracomment>
        <translation>não arrancou em %1 s</translation>
    </message>
    <message id="installctl-not-utf8">
        <source>the path is not UTF-8, so the service cannot be told</source>
        <extracomment>The path of a file</extracomment>
        <translation>o caminho não é UTF-8, pelo que não pode ser comunicado ao serviço</translation>
    </message>
    <message id="installctl-notification-installed">
        <source>Installed</source>
        <extracomment>Title of a notification</extracomment>
        <translation>Instalado</translation>
    </message>
    <message id="installctl-notification-installing">
        <source>Installing…</source>
        <extracomment>Title of a notification</extracomment>
        <translation>A instalar…</translation>
    </message>
    <message id="installctl-notification-not-installed">
        <source>Not installed</source>
        <extracomment>Title of a notification</extracomment>
        <translation>Não instalado</translation>
    </message>
    <message id="installctl-notification-unknown">
        <source>Outcome not known</source>
        <extracomment>Title of a notification: nobody knows how the installation has ended or will end</extracomment>
        <translation>Resultado desconhecido</translation>
    </message>
    <message id="installctl-reading">
        <source>reading</source>
        <extracomment>The service reads a package file</extracomment>
        <translation>a ler</translation>
    </message>
    <message id="installctl-removed">
        <source>removed</source>
        <extracomment>A package has been removed</extracomment>
        <translation>removido</translation>
    </message>
    <message id="installctl-removing">
        <source>removing</source>
        <extracomment>A package is being removed</extracomment>
        <translation>a remover</translation>
    </message>
    <message id="installctl-removing-of">
        <source>removing %1 of %2</source>
        <extracomment>A package is being removed; %1 and %2 are numbers</extracomment>
        <translation>a remover, %1 de %2</translation>
    </message>
    <message id="installctl-requested">
        <source>requested</source>
        <extracomment>The service has taken a request</extracomment>
        <translation>solicitado</translation>
    </message>
    <message id="installctl-see-help">
        <source>see %1</source>
        <extracomment>%1 is a command</extracomment>
        <translation>consulte %1</translation>
    </message>
    <message id="installctl-service-ended">
        <source>the service ended before it reported an outcome</source>
        <extracomment>Why it is not known how the request has ended</extracomment>
        <translation>o serviço terminou antes de comunicar um resultado</translation>
    </message>
    <message id="installctl-service-rests">
        <source>the service does not run</source>
        <extracomment>The service is not on the bus</extracomment>
        <translation>o serviço não está em execução</translation>
    </message>
    <message id="installctl-service-runs">
        <source>the service runs</source>
        <extracomment>The service is on the bus</extracomment>
        <translation>o serviço está em execução</translation>
    </message>
    <message id="installctl-timeout">
        <source>timeout</source>
        <extracomment>The time is over</extracomment>
        <translation>tempo esgotado</translation>
    </message>
    <message id="installctl-unanswered">
        <source>no answer within %1 s; the service may go on</source>
        <extracomment>The program waits no longer</extracomment>
        <translation>sem resposta em %1 s; talvez o serviço continue</translation>
    </message>
    <message id="installctl-unavailable">
        <source>the service is not available: %1</source>
        <extracomment>%1 is the reason</extracomment>
        <translation>o serviço não está disponível: %1</translation>
    </message>
    <message id="installctl-uncertain">
        <source>%1 (may be the outcome of another request)</source>
        <extracomment>%1 is the outcome of a request</extracomment>
        <translation>%1 (pode ser o resultado de outro pedido)</translation>
    </message>
    <message id="installctl-unclear">
        <source>unclear</source>
        <extracomment>It is not known how the request has ended</extracomment>
        <translation>incerto</translation>
    </message>
    <message id="installctl-unfinished">
        <source>no outcome within %1 s; the service goes on</source>
        <extracomment>The program waits no longer</extracomment>
        <translation>sem resultado em %1 s; o serviço continua</translation>
    </message>
    <message id="installctl-unprivileged">
        <source>unprivileged</source>
        <extracomment>The user may not ask for this</extracomment>
        <translation>não autorizado</translation>
    </message>
    <message id="installctl-unrequested">
        <source>not requested: %1 of %2</source>
        <extracomment>%1 and %2 are numbers of files or packages</extracomment>
        <translation>não solicitados: %1 de %2</translation>
    </message>
    <message id="installctl-unwritten">
        <source>the output could not be written</source>
        <extracomment>An error</extracomment>
        <translation>não foi possível escrever a saída</translation>
    </message>
    <message id="installctl-usage-clash">
        <source>%1 does not go with %2</source>
        <extracomment>%1 is an option such as --sdk or another word of the command line, %2 an option or a command</extracomment>
        <translation>%1 não é compatível com %2</translation>
    </message>
    <message id="installctl-usage-marked-name">
        <source>a name must not begin with the character %1</source>
        <extracomment>%1 is the code of a character</extracomment>
        <translation>um nome não pode começar com o carácter %1</translation>
    </message>
    <message id="installctl-usage-no-command">
        <source>a command is missing</source>
        <extracomment>An error in a command line</extracomment>
        <translation>falta um comando</translation>
    </message>
    <message id="installctl-usage-no-subject">
        <source>a file or a name is missing</source>
        <extracomment>An error in a command line</extracomment>
        <translation>falta um ficheiro ou um nome</translation>
    </message>
    <message id="installctl-usage-seconds">
        <source>%1 takes a whole number from 0 to %2</source>
        <extracomment>%1 is the option --timeout, %2 a number</extracomment>
        <translation>%1 requer um número inteiro de 0 a %2</translation>
    </message>
    <message id="installctl-usage-too-many-names">
        <source>with %1 no more than %2 names can be given</source>
        <extracomment>%1 is the option --no-wait, %2 a number</extracomment>
        <translation>com %1 não podem ser indicados mais de %2 nomes</translation>
    </message>
    <message id="installctl-usage-unknown-command">
        <source>there is no command %1</source>
        <extracomment>%1 is the word that was given</extracomment>
        <translation>o comando %1 não existe</translation>
    </message>
    <message id="installctl-usage-wrong-name">
        <source>a name is empty or not UTF-8</source>
        <extracomment>An error in a command line</extracomment>
        <translation>um nome está vazio ou não é UTF-8</translation>
    </message>
    <message id="installctl-waiting">
        <source>waiting for the service</source>
        <extracomment>The service has not answered, or does something else at the moment</extracomment>
        <translation>a aguardar o serviço</translation>
    </message>
    <message id="installctl-wrong-url">
        <source>not a URL of a file on this device</source>
        <extracomment>Why a file cannot be installed</extracomment>
        <translation>não é o URL de um ficheiro neste dispositivo</translation>
    </message>
</context>
</TS>
